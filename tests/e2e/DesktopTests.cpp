#include "app/LoginManager.h"
#include "e2e/Desktop.h"
#include "e2e/Records.h"
#include "e2e/Walking.h"
#include "support/Rounds.h"
#include "support/TestMounts.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sqlite3.h>
#include <stdexcept>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;
using testing::AnyOf;
using testing::UnorderedElementsAre;

constexpr std::chrono::seconds promptly{10};

/// A copy of the system's settings in the place of the settings, for this process and those that it starts.
class SystemSettings {
public:
    explicit SystemSettings(const fs::path& copy) {
        fs::create_directory(copy);
        const auto copied = runProgram({.arguments = {"cp", "-a", "/etc/.", copy}, .environment = {}});
        if (copied.exitCode != 0) throw std::runtime_error(copied.error);
        mount_.emplace(TestMount::bind(copy, "/etc"));
    }

    void setTimeZone(const std::string& zone) const {
        fs::create_symlink("/usr/share/zoneinfo/" + zone, "/etc/localtime.new");
        fs::rename("/etc/localtime.new", "/etc/localtime");
    }

private:
    std::optional<TestMount> mount_;
};

/// Keeps everybody else from writing to a history while it lives.
class WritingElsewhere {
public:
    explicit WritingElsewhere(const fs::path& history) {
        constexpr int patience = 10'000;  // ms: the window may be tidying up after its check
        if (sqlite3_open(history.c_str(), &db_) != SQLITE_OK ||
            sqlite3_busy_timeout(db_, patience) != SQLITE_OK ||
            sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error("the history can't be locked");
    }
    ~WritingElsewhere() { sqlite3_close(db_); }
    WritingElsewhere(const WritingElsewhere&) = delete;
    WritingElsewhere& operator=(const WritingElsewhere&) = delete;

private:
    sqlite3* db_ = nullptr;
};

/// What the log holds that is not in the history's own file.
std::uintmax_t logBytes(const Brindle& brindle) {
    std::error_code isNotThere;
    const auto bytes = fs::file_size(brindle.historyFile().native() + "-wal", isNotThere);
    return isNotThere ? 0 : bytes;
}

class DesktopDay : public testing::Test {
protected:
    void TearDown() override {
        // The drive is free to go when nobody looks at it any more.
        desktop.program.reset();
    }

    [[nodiscard]] std::string today() const {
        const auto day = desktop.json({"status"})["today"];
        return std::to_string(day["year"].get<int>()) + "-" +
               std::to_string(day["month"].get<int>() + 100).substr(1) + "-" +
               std::to_string(day["day"].get<int>() + 100).substr(1);
    }
    /// "ACTION DELTA NAME" of every change that is recorded of a day.
    [[nodiscard]] std::vector<std::string> changesOn(const std::string& day) const {
        std::vector<std::string> rows;
        const auto listed = desktop.json({"changes", "--day", day});
        for (const auto& change : listed["changes"])
            rows.push_back(change["action"].get<std::string>() + " " +
                           std::to_string(change["byteDelta"].get<std::int64_t>()) + " " +
                           change["name"].get<std::string>());
        return rows;
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    fs::path drive = folder.path() / "drive";
    Desktop desktop;
};

TEST_F(DesktopDay, IsRecordedAsItWas) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = folder.path() / "image";
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "mkfs.ext4 is not installed";
    const SystemSettings settings(folder.path() / "etc");
    settings.setTimeZone("Etc/GMT+12");
    const MockService manager(desktop.system, "logind", loginManager);
    fs::create_directory(drive);
    auto mount = TestMount::image(image, drive);
    for (const char* name : {"grows", "shrinks", "goes", "stays"}) writeFile(tree / "inner" / name, 1000);
    writeFile(drive / "kept", 500);
    desktop.track({tree, drive});
    const std::string firstDay = today();

    // While nobody looked.
    writeFile(tree / "before the start", 10);
    desktop.expectCheckAfter([&] { desktop.start(); });

    writeFile(tree / "inner/grows", 1500);
    writeFile(tree / "inner/shrinks", 400);
    fs::remove(tree / "inner/goes");
    fs::rename(tree / "inner/stays", tree / "moved");
    desktop.check();

    writeFile(tree / "in the sleep", 20);
    desktop.expectCheckAfter([&] { sleepAndWake(desktop.system.connect()); });

    mount.unmount();
    EXPECT_TRUE(eventually([&] { return desktop.ofLocations("status").at("drive") == "disconnected"; }));
    writeFile(tree / "without the drive", 30);
    desktop.check();
    EXPECT_EQ(desktop.ofLocations("status").at("drive"), "disconnected");
    const auto elsewhere = runProgram(
        {.arguments = {"unshare", "--mount", "sh", "-c",
                       "mount -o loop \"$0\" \"$1\" && echo 123456789 > \"$1/elsewhere\" && umount \"$1\"",
                       image, drive},
         .environment = {"PATH=/usr/sbin:/usr/bin:/sbin:/bin"}});
    ASSERT_EQ(elsewhere.exitCode, 0) << elsewhere.error;
    const auto lastCheck = desktop.ofLocations("lastCheckAt").at("drive");
    auto mountedAgain = TestMount::image(image, drive);
    EXPECT_TRUE(eventually([&] { return desktop.ofLocations("lastCheckAt").at("drive") != lastCheck; }));
    EXPECT_EQ(desktop.ofLocations("status").at("drive"), "active");

    // A second start shows the first's window.
    const auto second = runProgram(desktop.launch());
    EXPECT_EQ(second.exitCode, 0) << second.error;
    EXPECT_TRUE(desktop.program->isRunning());

    // Whatever the time, the day is another one there.
    settings.setTimeZone("Pacific/Kiritimati");
    const std::string secondDay = today();
    EXPECT_NE(secondDay, firstDay);
    EXPECT_TRUE(eventually([&] {
        desktop.check();
        return desktop.ofLocations("today").at("tree")["state"] == "recorded";
    }));
    writeFile(tree / "on the next day", 40);
    desktop.check();

    const auto result = desktop.quit();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output + result.error, "");
    EXPECT_EQ(logBytes(desktop.brindle), 0U);
    EXPECT_THAT(
        changesOn(firstDay),
        UnorderedElementsAre("added 10 before the start", "grew 500 grows", "shrank -600 shrinks",
                             "removed -1000 goes", "removed -1000 stays", "added 1000 moved",
                             "added 20 in the sleep", "added 30 without the drive", "added 10 elsewhere"));
    EXPECT_THAT(changesOn(secondDay), UnorderedElementsAre("added 40 on the next day"));
    EXPECT_EQ(Records(desktop.brindle).value("PRAGMA integrity_check"), "ok");
    mountedAgain.unmount();
}

TEST(DesktopActions, AreDoneByTheFirstStartOrHandedToIt) {
    Desktop desktop;
    const fs::path files = desktop.brindle.home() / "files";
    writeFile(files / "a", 1000);
    desktop.track({files});
    // Nothing checks but by being asked to.
    std::ofstream(desktop.brindle.settingsFile())
        << R"({"startupSetupCompleted": true, "checksPaused": true})";
    ProgramLaunch launch = desktop.launch();
    launch.arguments.emplace_back("--check-now");
    desktop.expectCheckAfter([&] { desktop.program = std::make_unique<RunningProgram>(launch); });
    desktop.expectCheckAfter([&] { EXPECT_EQ(runProgram(launch).exitCode, 0); });
    EXPECT_EQ(desktop.quit().exitCode, 0);
}

/// A tree whose check takes a moment: 40,000 files, which are one.
class DesktopEnd : public testing::Test {
protected:
    DesktopEnd() {
        writeFile(tree / "0/0", 100);
        for (int i = 1; i < 40'000; ++i) {
            const fs::path parent = tree / std::to_string(i % 40);
            if (i < 40) fs::create_directories(parent);
            fs::create_hard_link(tree / "0/0", parent / std::to_string(i));
        }
        desktop.track({tree});
    }

    void setSize(std::uintmax_t bytes) const { fs::resize_file(tree / "0/0", bytes); }
    void signal(int number) const { desktop.program->signal(number); }
    [[nodiscard]] int endOf(std::unique_ptr<RunningProgram>& program) const {
        const auto asked = steady_clock::now();
        const auto result = program->wait();
        EXPECT_LT(steady_clock::now() - asked, promptly);
        EXPECT_EQ(result.error, "");
        program.reset();
        return result.exitCode;
    }
    /// Lets a check go on as far as it gets while somebody else writes to the history.
    void beginCheck() {
        EXPECT_TRUE(desktop.act("check-now"));
        EXPECT_TRUE(eventually([&] { return !desktop.isAtRest(); }));
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }

    /// The size of all files in the history, which is whole.
    [[nodiscard]] std::string recordedSize() const {
        const Records records(desktop.brindle);
        EXPECT_EQ(records.value("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(
            records.value(
                "SELECT COUNT(*), COUNT(DISTINCT size), SUM(size) = (SELECT tracked_bytes FROM locations) "
                "FROM inventory"),
            "40000|1|1");
        EXPECT_EQ(records.value("SELECT SUM(delta) FROM observations"),
                  records.value("SELECT SUM(added) - SUM(freed) FROM daily_totals"));
        return records.value("SELECT MAX(size) FROM inventory");
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Desktop desktop;
};

TEST_F(DesktopEnd, InAWalkRecordsNothingAndAfterItEverything) {
    setSize(200);
    bool wasInTheWalk = false;
    for (int attempt = 0; attempt < 10 && !wasInTheWalk; ++attempt) {
        desktop.start();
        waitUntilWalking(*desktop.program, tree);
        signal(SIGTERM);
        EXPECT_EQ(endOf(desktop.program), 0);
        EXPECT_EQ(logBytes(desktop.brindle), 0U);
        wasInTheWalk = recordedSize() == "100";
    }
    EXPECT_TRUE(wasInTheWalk);

    desktop.expectCheckAfter([&] { desktop.start(); });
    EXPECT_EQ(desktop.ofLocations("trackedBytes").at("tree"), 200 * 40'000);
    setSize(300);
    {
        const WritingElsewhere writing(desktop.brindle.historyFile());
        beginCheck();
        signal(SIGTERM);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        EXPECT_TRUE(desktop.program->isRunning()) << "its last write is still to come";
    }
    EXPECT_EQ(endOf(desktop.program), 0);
    EXPECT_THAT(recordedSize(), AnyOf("200", "300"));
}

TEST_F(DesktopEnd, ASecondSignalWaitsForNothing) {
    desktop.expectCheckAfter([&] { desktop.start(); });
    setSize(200);
    {
        const WritingElsewhere writing(desktop.brindle.historyFile());
        beginCheck();
        signal(SIGTERM);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        signal(SIGTERM);
        EXPECT_EQ(endOf(desktop.program), -SIGTERM);
    }
    EXPECT_EQ(recordedSize(), "100");
}

TEST_F(DesktopEnd, AtAnyMomentLosesNothing) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    const auto begin = steady_clock::now();
    desktop.expectCheckAfter([&] { desktop.start(); });
    const auto usualTime = static_cast<std::uint64_t>((steady_clock::now() - begin).count());
    EXPECT_EQ(desktop.quit().exitCode, 0);
    std::string size = "100";
    for (int round = 1; round <= testRounds(8); ++round) {
        const auto next = std::to_string(100 + round);
        setSize(std::stoul(next));
        desktop.start();
        std::this_thread::sleep_for(steady_clock::duration(random() % usualTime));
        const int number = round % 2 == 0 ? SIGTERM : SIGKILL;
        signal(number);
        // Who is asked before it listens is ended by the signal.
        EXPECT_THAT(endOf(desktop.program), AnyOf(number == SIGTERM ? 0 : -number, -number));
        const std::string recorded = recordedSize();
        EXPECT_THAT(recorded, AnyOf(size, next));
        size = recorded;
    }
    setSize(1000);
    desktop.expectCheckAfter([&] { desktop.start(); });
    EXPECT_EQ(desktop.quit().exitCode, 0);
    EXPECT_EQ(recordedSize(), "1000");
}

}  // namespace
}  // namespace brindle
