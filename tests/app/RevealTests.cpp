#include "app/PrivateBus.h"
#include "app/desktop/Reveal.h"
#include "platform/Interruption.h"

#include <QObject>
#include <QStringList>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace brindle {
namespace {

namespace fs = std::filesystem;

class FileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;

public Q_SLOTS:
    Q_SCRIPTABLE void ShowItems(const QStringList& items, const QString&) { shown += items; }
};

std::string contents(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Reveal, NamesKeepEveryByte) {
    EXPECT_EQ(fileURI("/home/ann/a file"), "file:///home/ann/a%20file");
    EXPECT_EQ(fileURI("/50%#1?"), "file:///50%25%231%3F");
    EXPECT_EQ(fileURI("/\xff\n\xc3\xbc"), "file:///%FF%0A%C3%BC");
}

TEST(Reveal, AsksTheFileManagerToSelectTheItem) {
    PrivateBus bus;
    FileManager manager;
    auto connection = bus.connect();
    connection.registerObject("/org/freedesktop/FileManager1", &manager,
                              QDBusConnection::ExportScriptableSlots);
    connection.registerService("org.freedesktop.FileManager1");
    Reveal reveal(bus.connect(), "/nowhere/opener");
    bool isFailed = false;
    QObject::connect(&reveal, &Reveal::failed, [&] { isFailed = true; });
    reveal.show("/home/ann/a \xff");
    EXPECT_TRUE(eventually([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList{"file:///home/ann/a%20%FF"});
    EXPECT_FALSE(isFailed);
}

TEST(Reveal, WithoutAFileManagerTheFolderIsOpened) {
    const TempFolder folder;
    const fs::path opener = folder.path() / "opener";
    const fs::path file = folder.path() / "a file";
    const fs::path result = folder.path() / "result";
    std::ofstream(file).close();
    // Tells which signals do not reach it, and what it was given. Nothing is started before: that would
    // change the signals.
    std::ofstream(opener) << "#!/bin/sh\n"
                             "{ while read -r name value; do case $name in SigBlk:) echo $value; esac; done"
                             " < /proc/$$/status; echo \"$@\"; } > '"
                          << result.native() << ".new'; mv '" << result.native() << ".new' '"
                          << result.native() << "'\n";
    fs::permissions(opener, fs::perms::owner_all);

    const Interruption interruption([] {});
    Reveal reveal(QDBusConnection("no bus"), QString::fromStdString(opener.string()));
    for (const fs::path& shown : {file, folder.path()}) {
        reveal.show(shown.native());
        EXPECT_TRUE(eventually([&] { return fs::exists(result); }));
        EXPECT_EQ(contents(result), "0000000000000000\nfile://" + folder.path().native() + "\n");
        fs::remove(result);
    }
}

TEST(Reveal, SaysOnceWhenThereIsNoWay) {
    for (const char* opener : {"/nowhere/opener", "false"}) {
        Reveal reveal(QDBusConnection("no bus"), opener);
        std::vector<std::string> failed;
        QObject::connect(&reveal, &Reveal::failed, [&](const std::string& path) { failed.push_back(path); });
        reveal.show("/home/ann");
        EXPECT_TRUE(eventually([&] { return !failed.empty(); }));
        EXPECT_EQ(failed, std::vector<std::string>{"/home/ann"});
    }
}

}  // namespace
}  // namespace brindle

#include "RevealTests.moc"
