#include "e2e/Records.h"
#include "e2e/Walking.h"
#include "support/Rounds.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <thread>
#include <unistd.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;
using testing::HasSubstr;

constexpr std::chrono::seconds promptly{1};

class Stop : public testing::Test {
protected:
    Stop() {
        writeFile(tree / "0/0", 100);
        for (int i = 1; i < 40'000; ++i) {
            const fs::path parent = tree / std::to_string(i % 40);
            if (i < 40) fs::create_directories(parent);
            fs::create_hard_link(tree / "0/0", parent / std::to_string(i));
        }
    }

    [[nodiscard]] RunningProgram startCheck(const std::vector<fs::path>& folders) const {
        std::vector<std::string> arguments{"check"};
        arguments.insert(arguments.end(), folders.begin(), folders.end());
        return RunningProgram(brindle.launch(std::move(arguments)));
    }

    /// The result of a check that was asked to stop during the walk of `tree`; none when that came too late.
    [[nodiscard]] std::optional<ProgramResult> stopInTheWalk(const std::vector<fs::path>& folders,
                                                             int signal) const {
        RunningProgram check = startCheck(folders);
        waitUntilWalking(check, tree);
        check.signal(signal);
        const auto asked = steady_clock::now();
        auto result = check.wait();
        EXPECT_LT(steady_clock::now() - asked, promptly);
        if (result.exitCode == 0) return {};
        EXPECT_EQ(result.exitCode, 130);
        EXPECT_THAT(result.error,
                    HasSubstr("Stopped: “tree” wasn't checked, and nothing was recorded for it."));
        return result;
    }

    /// Tries again with a new history until the signal is in time.
    [[nodiscard]] ProgramResult stopInTheFirstWalk(const std::vector<fs::path>& folders) const {
        for (int attempt = 0; attempt < 20; ++attempt) {
            fs::remove_all(brindle.dataDirectory());
            if (auto result = stopInTheWalk(folders, SIGINT)) return *result;
        }
        throw std::runtime_error("no signal came during the walk");
    }

    [[nodiscard]] bool isWholeBaseline(const Records& records) const {
        return records.everything().size() > 1 &&
               records.value(
                   "SELECT COUNT(*), (SELECT COUNT(*) FROM inventory), SUM(tracked_bytes) "
                   "FROM locations WHERE baseline_at IS NOT NULL") == "1|40000|4000000";
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(Stop, DuringAWalkLeavesTheHistoryAsItWas) {
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    fs::resize_file(tree / "0/0", 200);
    auto before = Records(brindle).everything();
    int stopped = 0;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGINT, SIGTERM, SIGHUP}) {
        const auto result = stopInTheWalk({tree}, signal);
        auto now = Records(brindle).everything();
        if (result) {
            ++stopped;
            EXPECT_EQ(result->output, "");
            EXPECT_TRUE(now == before) << "something was recorded";
        }
        before = std::move(now);
    }
    EXPECT_GT(stopped, 0);
}

TEST_F(Stop, KeepsTheLocationThatIsCommittedAlreadyAndForgetsTheFolderThatIsNot) {
    const fs::path first = folder.path() / "first";
    writeFile(first / "a", 10);
    const auto result = stopInTheFirstWalk({first, tree});
    EXPECT_THAT(result.output, HasSubstr("Baseline set"));
    EXPECT_THAT(result.error, HasSubstr("“tree” isn't included any more."));
    const Records records(brindle);
    EXPECT_THAT(records.rows("SELECT name, tracked_bytes, baseline_at IS NOT NULL FROM locations"),
                testing::ElementsAre("first|10|1"));
    EXPECT_EQ(records.inventory(), listingOf(first));
}

TEST_F(Stop, DuringACommitIsTooLate) {
    const auto logSize = [&] {
        std::error_code isNotThere;
        const auto size = fs::file_size(brindle.historyFile().native() + "-wal", isNotThere);
        return isNotThere ? 0 : size;
    };
    ASSERT_EQ(startCheck({tree}).wait().exitCode, 0);
    fs::resize_file(tree / "0/0", 200);  // all of them, since they are one
    RunningProgram check = startCheck({tree});
    waitUntilWalking(check, tree);
    const auto inTheWalk = logSize();
    while (logSize() <= inTheWalk && check.isRunning()) std::this_thread::yield();
    check.signal(SIGINT);
    const auto result = check.wait();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, HasSubstr("in 40,000 files"));
    EXPECT_EQ(Records(brindle).inventory(), listingOf(tree));
}

TEST_F(Stop, AtAnyMomentIsAllOrNothingAndSoIsAKill) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    const auto start = steady_clock::now();
    ASSERT_EQ(startCheck({tree}).wait().exitCode, 0);
    const auto usualTime = static_cast<std::uint64_t>((steady_clock::now() - start).count());
    const int rounds = testRounds(24);
    int faults = 0;
    for (int round = 0; round < rounds; ++round) {
        const int signal = round % 2 == 0 ? SIGTERM : SIGKILL;
        fs::remove_all(brindle.dataDirectory());
        RunningProgram check = startCheck({tree});
        std::this_thread::sleep_for(steady_clock::duration(random() % usualTime));
        check.signal(signal);
        const int exitCode = check.wait().exitCode;
        faults += exitCode != 0 ? 1 : 0;
        // It is ended by the signal before it listens and after its work.
        EXPECT_THAT(exitCode, testing::AnyOf(0, 130, -signal));
        const Records records(brindle);
        const bool isWhole = isWholeBaseline(records);
        // Who is killed cannot forget the folder that the command included.
        EXPECT_TRUE(isWhole || records.everything().size() <= (signal == SIGKILL ? 1U : 0U));
        EXPECT_TRUE(isWhole ? exitCode != 130 : exitCode != 0) << exitCode;
        EXPECT_THAT(records.value("PRAGMA integrity_check"), testing::AnyOf("ok", ""));
    }
    reportRounds(rounds, faults);
    EXPECT_EQ(startCheck({tree}).wait().exitCode, 0);
    EXPECT_TRUE(isWholeBaseline(Records(brindle)));
}

TEST_F(Stop, AReaderThatWentAwayStopsNothing) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[0]);
    const FileDescriptor output(ends[1]);
    for (auto arguments : {std::vector<std::string>{"check", tree}, {"check", "--json"}}) {
        ProgramLaunch launch = brindle.launch(arguments);
        launch.output = output.get();
        const auto result = runProgram(launch);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.error, "");
    }
    const Records records(brindle);
    EXPECT_TRUE(isWholeBaseline(records));
    EXPECT_EQ(records.value("SELECT COUNT(*) FROM scan_runs"), "2");
}

}  // namespace
}  // namespace brindle
