#include "app/EventLoop.h"
#include "model/NumberText.h"
#include "support/TestMounts.h"

#include <QProcess>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>

#include "acceptance/Files.h"
#include "acceptance/Person.h"
#include "acceptance/StartedBrindle.h"
#include "acceptance/TestTime.h"
#include "acceptance/UserSession.h"

namespace brindle {

extern UserSession* session;

namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, std::size_t bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << std::string(bytes, 'x');
}

/// A new user's first week, on real files, through the windows alone.
class FirstWeek : public testing::Test {
protected:
    FirstWeek() {
        write(files / "Letters/first", 4'000'000);
        write(files / "Movies/long", 30'000'000);
        write(files / "Movies/short", 6'000'000);
        write(files / "old", 1'500'000);
    }

    /// A service of the desktop that waits for none of ours.
    [[nodiscard]] std::string tray(const QStringList& arguments) const {
        QProcess tool;
        tool.start("/usr/bin/python3", QStringList(BRINDLE_TRAY) + arguments);
        EXPECT_TRUE(runUntil([&] { return tool.state() == QProcess::NotRunning; }));
        return tool.readAllStandardOutput().toStdString();
    }

    void start() {
        brindle = std::make_unique<StartedBrindle>(time);
        ASSERT_TRUE(person.sees("Brindle"));
    }
    void quit() {
        person.press("ctrl+q");
        EXPECT_TRUE(runUntil([&] { return brindle->hasEnded(); }));
        brindle.reset();
    }

    /// Types a path into the system's dialog for folders or files.
    void choose(const fs::path& path) const {
        person.press("ctrl+a");
        person.type(path);
        person.press("Return");
    }

    /// A check that is under way, or soon is, ends; what it found goes to the day's account.
    void expectCheckAfter(const std::function<void()>& cause) {
        int runs = 0;
        const auto connection =
            QObject::connect(&brindle->model(), &AppModel::lastRunChanged, [&] { ++runs; });
        cause();
        EXPECT_TRUE(runUntil([&] { return runs > 0 && !brindle->model().isChecking(); }));
        QObject::disconnect(connection);
        const Files found = filesIn(folders);
        if (known) today += movement(*known, found);
        known = found;
    }
    void nextDay() {
        today = {};
        time.pass(std::chrono::hours(24));
        brindle->model().dayOrZoneChanged();
    }

    /// The Overview and the terminal show what the files themselves tell.
    void expectFigures() {
        person.press("ctrl+1");
        EXPECT_TRUE(person.sees("Net change: " + signedByteAmount(today.net()))) << person.everything();
        EXPECT_TRUE(person.sees("Added: " + byteAmount(today.added))) << person.everything();
        EXPECT_TRUE(person.sees("Freed: " + byteAmount(today.freed))) << person.everything();
        EXPECT_TRUE(person.sees("Tracked… " + byteAmount(sizeOf(*known)))) << person.everything();
    }

    fs::path files = session->home() / "files";
    fs::path stick = session->folder() / "stick";
    std::vector<fs::path> folders{files};
    TestTime time{systemNow() + 10.0 * 86400};  // the files that are there are older than the first check
    Person person;
    std::unique_ptr<StartedBrindle> brindle;
    std::optional<Files> known;  // at the last check
    Movement today;
};

TEST_F(FirstWeek, EveryFigureIsThatOfTheFiles) {
    start();
    person.look("welcome");
    person.click("Get started");
    person.click("Choose another folder…");
    choose(files);
    ASSERT_TRUE(person.sees("Take out: files")) << person.everything();
    person.click("Choose another folder…");
    choose(files / "Letters");
    EXPECT_TRUE(person.sees("“Letters” is already checked as part of “files”.")) << person.everything();
    person.look("nested");
    person.click("Continue");
    person.click("Estimate history from before Brindle");
    person.click("Open at login");
    person.look("startup");
    expectCheckAfter([&] { person.click("Start the first check"); });
    ASSERT_TRUE(person.sees("1 location included")) << person.everything();
    person.look("overview");
    expectFigures();
    std::cout << person.everything();
    write(files / "Movies/new", 12'000'000);
    fs::resize_file(files / "old", 2'500'000);
    fs::remove(files / "Movies/short");
    expectCheckAfter([&] { person.press("ctrl+r"); });
    expectFigures();
    std::cout << person.everything();
    for (const char* page : {"ctrl+2", "ctrl+3", "ctrl+4", "ctrl+5"}) {
        person.press(page);
        person.look(page);
        std::cout << "=== " << page << "\n" << person.everything();
    }
}

}  // namespace
}  // namespace brindle
