#include "acceptance/Files.h"
#include "acceptance/Person.h"
#include "acceptance/StartedBrindle.h"
#include "acceptance/TestTime.h"
#include "acceptance/UserSession.h"
#include "app/EventLoop.h"
#include "model/NumberText.h"
#include "support/TestMounts.h"

#include <QApplication>
#include <QProcess>
#include <fmt/format.h>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>

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

    /// What the desktop's tray tells, or does: see tray.py.
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
        Files found = filesIn(folders);
        // What lies on a drive that is away is neither there nor gone.
        if (known && !isMounted())
            for (const auto& [path, size] : *known)
                if (path.native().starts_with(stick.native())) found[path] = size;
        if (known) today += movement(*known, found);
        known = found;
    }
    [[nodiscard]] bool isMounted() const { return fs::exists(stick / "lost+found"); }
    void nextDay() {
        today = {};
        time.pass(std::chrono::hours(24));
        brindle->model().dayOrZoneChanged();
    }

    /// The Overview shows what the files themselves tell.
    void expectFigures() {
        person.press("ctrl+1");
        EXPECT_TRUE(person.sees("Net change: " + signedByteAmount(today.net()))) << person.everything();
        EXPECT_TRUE(person.sees("Added: " + signedByteAmount(today.added))) << person.everything();
        EXPECT_TRUE(person.sees("Freed: " + signedByteAmount(-today.freed))) << person.everything();
        EXPECT_TRUE(person.sees("…. " + byteAmount(sizeOf(*known)) + " are tracked in 2 locations."))
            << person.everything();
    }

    /// The rows of a statement: the sum of their changes, by Python's own reading of CSV.
    [[nodiscard]] std::int64_t sumOf(const fs::path& statement) const {
        const char* sum =
            "import csv, sys; print(sum(int(row['Change in bytes']) "
            "for row in csv.DictReader(open(sys.argv[1], encoding='utf-8-sig', newline=''))))";
        const auto told = runProgram(session->launch({"/usr/bin/python3", "-c", sum, statement}));
        EXPECT_EQ(told.error, "");
        return std::stoll(told.output);
    }

    fs::path files = session->home() / "files";
    fs::path stick = session->folder() / "stick";
    std::vector<fs::path> folders{files, stick};
    TestTime time{systemNow() + 10.0 * 86400};  // the files that are there are older than the first check
    Person person;
    std::unique_ptr<StartedBrindle> brindle;
    std::optional<Files> known;  // at the last check
    Movement today;
};

TEST_F(FirstWeek, EveryFigureIsThatOfTheFiles) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = session->folder() / "image";
    fs::create_directory(stick);
    ASSERT_TRUE(makeImage(image, "ext4"));
    std::optional<TestMount> drive(TestMount::image(image, stick));
    write(stick / "Backup/archive", 3'000'000);

    // Installed, as the packages do it.
    const auto installed = runProgram(session->launch(
        {"cmake", "--install", BRINDLE_BUILD_FOLDER, "--prefix", session->prefix().native()}));
    ASSERT_EQ(installed.exitCode, 0) << installed.error;
    EXPECT_EQ(runProgram(session->launch({session->prefix() / "bin/brindle-desktop", "--version"})).exitCode,
              0);
    const RunningProgram trayHost(session->launch({"/usr/bin/python3", BRINDLE_TRAY, "host"}));

    // Monday: set up.
    start();
    EXPECT_TRUE(person.sees("A private, local statement of where your storage went."));
    person.look("welcome");
    person.click("Get started");
    person.click("Choose another folder…");
    choose(files);
    ASSERT_TRUE(person.sees("Take out: files")) << person.everything();
    person.click("Choose another folder…");
    choose(files / "Letters");
    EXPECT_TRUE(person.sees("“Letters” is already checked as part of “files”.")) << person.everything();
    person.look("nested");
    person.click("Choose another folder…");
    choose(stick);
    ASSERT_TRUE(person.sees("Take out: stick")) << person.everything();
    person.look("chosen");
    person.click("Continue");
    person.click("Estimate history from before Brindle");
    person.click("Open at login");
    EXPECT_TRUE(runUntil(
        [&] { return fs::exists(session->home() / ".config/autostart/org.brindle.brindle.desktop"); }));
    person.look("startup");
    expectCheckAfter([&] { person.click("Start the first check"); });
    ASSERT_TRUE(person.sees("2 locations included")) << person.everything();
    person.look("overview");
    expectFigures();
    // What was there already is an estimate, and in no sum.
    EXPECT_TRUE(person.sees("Estimated from file dates: " + byteAmount(sizeOf(*known)) + " came on…"))
        << person.everything();

    // Files come, grow and go; the user asks for a check.
    write(files / "Movies/new", 12'000'000);
    fs::resize_file(files / "old", 2'500'000);
    fs::remove(files / "Movies/short");
    expectCheckAfter([&] { person.press("ctrl+r"); });
    expectFigures();
    person.press("ctrl+2");
    EXPECT_TRUE(person.sees("files, folder, 3 files, +13.0 MB, −6.0 MB")) << person.everything();
    person.click("files, folder…");
    EXPECT_TRUE(person.sees("Movies, folder, 2 files, +12.0 MB, −6.0 MB")) << person.everything();
    EXPECT_TRUE(person.sees("old, Grew…")) << person.everything();
    person.look("activity");

    // Tuesday to Thursday: checks by themselves.
    for (const std::size_t day : {1U, 2U, 3U}) {
        write(files / fmt::format("Letters/day {}", day), day * 1'000'000);
        write(stick / fmt::format("Backup/day {}", day), day * 10'000);
        fs::resize_file(files / "Movies/long", 30'000'000 - day * 2'000'000);
        expectCheckAfter([&] { nextDay(); });
        expectFigures();
    }

    // The drive is away for a day, and nothing of it counts as gone.
    drive.reset();
    ASSERT_TRUE(person.sees("“stick” is disconnected. Its record goes on when it is back."));
    person.look("disconnected");
    write(files / "Letters/alone", 700'000);
    expectCheckAfter([&] { nextDay(); });
    expectFigures();
    expectCheckAfter([&] {
        drive.emplace(TestMount::image(image, stick));
        write(stick / "Backup/back", 500'000);
    });
    person.press("ctrl+5");
    ASSERT_TRUE(person.seesNo("Disconnected"));
    expectCheckAfter([&] { person.press("ctrl+r"); });
    expectFigures();

    // Settings hold at once.
    person.press("ctrl+comma");
    person.click("Storage checks");
    person.click("Check every: 5 minutes");
    person.click("15 minutes");
    person.click("Appearance");
    person.click("Light");
    person.click("Large");
    person.look("settings");
    person.press("Escape");
    EXPECT_TRUE(person.sees("Checks every 15 min")) << person.everything();

    // The day as a statement.
    const fs::path statement = session->home() / "statement.csv";
    person.press("ctrl+2");
    person.press("alt+Home");
    person.press("ctrl+e");
    ASSERT_TRUE(person.sees("Includes…")) << person.everything();
    person.press("Return");
    ASSERT_TRUE(runUntil([] { return QApplication::activeModalWidget() != nullptr; }));
    choose(statement);
    ASSERT_TRUE(person.sees("Your storage statement is ready.")) << person.everything();
    person.look("exported");
    EXPECT_EQ(sumOf(statement), today.net());
    person.press("Escape");

    // Closed, and back from the tray, where the day stands, too, at its place.
    const QPoint place = brindle->surfaces().mainWindow().window()->position();
    person.press("ctrl+w");
    EXPECT_TRUE(runUntil([&] { return !brindle->surfaces().mainWindow().isVisible(); }));
    EXPECT_TRUE(runUntil([&] {
        return tray({"item"}).find("today " + signedByteAmount(today.net())) != std::string::npos;
    })) << tray({"item"});
    (void)tray({"press", "Open Mini Window"});
    EXPECT_TRUE(person.sees("Added: " + signedByteAmount(today.added))) << person.everything();
    person.look("mini");
    (void)tray({"press", "Open Brindle"});
    EXPECT_TRUE(person.sees("Checks every 15 min")) << person.everything();
    EXPECT_EQ(brindle->surfaces().mainWindow().window()->position(), place);
    person.look("reopened");

    // Saturday: another start finds all of it.
    quit();
    start();
    ASSERT_TRUE(person.sees("2 locations included")) << person.everything();
    EXPECT_TRUE(person.sees("Checks every 15 min"));
    expectFigures();
    person.look("again");
    quit();
}

}  // namespace
}  // namespace brindle
