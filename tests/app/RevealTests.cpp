#include "app/PrivateBus.h"
#include "app/desktop/Reveal.h"
#include "platform/Interruption.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/wait.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

class FileManager : public QDBusVirtualObject {
public:
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.interface() != "org.freedesktop.FileManager1" || message.member() != "ShowItems" ||
            message.signature() != "ass")
            return false;
        shown += message.arguments().front().toStringList();
        return bus.send(message.createReply());
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    QStringList shown;
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
    connection.registerVirtualObject("/org/freedesktop/FileManager1", &manager);
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
        // What waits for the opener's end belongs to nobody but itself.
        EXPECT_TRUE(eventually([] {
            siginfo_t ended{};
            return waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) != 0;
        }));
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
