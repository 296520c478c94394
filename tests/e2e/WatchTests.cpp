#include "e2e/Records.h"
#include "platform/FileLock.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

constexpr std::chrono::milliseconds aWhile{400};

class Watch : public testing::Test {
protected:
    Watch() {
        writeFile(tree / "a", 10);
        EXPECT_EQ(brindle.run({"include", tree}).exitCode, 0);
    }

    void waitForAnOutput(const RunningProgram& watch) const {
        while (watch.isRunning() && fs::file_size(told) == 0) std::this_thread::yield();
    }

    /// Standard output goes to the file `told`, where it can be read meanwhile.
    [[nodiscard]] ProgramLaunch watching(const FileDescriptor& output) const {
        ProgramLaunch launch = brindle.launch({"watch"});
        launch.output = output.get();
        return launch;
    }
    [[nodiscard]] FileDescriptor openTold() const {
        return FileDescriptor(::open(told.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    }
    [[nodiscard]] std::string textTold() const {
        std::ifstream file(told);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] std::string runs() const {
        return Records(brindle).value("SELECT COUNT(*) FROM scan_runs");
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    fs::path told = folder.path() / "told";
    Brindle brindle;
};

TEST_F(Watch, ChecksAtOnceTellsALineAndEndsWellWhenAsked) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const auto output = openTold();
        RunningProgram watch(watching(output));
        waitForAnOutput(watch);
        watch.signal(signal);
        EXPECT_EQ(watch.wait().exitCode, 0);
        EXPECT_THAT(textTold(), MatchesRegex(".*: 1 location checked, no changes\n"));
    }
    EXPECT_EQ(runs(), "2");
}

TEST_F(Watch, WaitsForAnotherProgramThatChecks) {
    auto lock = FileLock::tryToTake(brindle.dataDirectory() / "check.lock");
    ASSERT_TRUE(lock);
    const auto output = openTold();
    RunningProgram watch(watching(output));
    std::this_thread::sleep_for(aWhile);
    EXPECT_EQ(runs(), "0");
    lock.reset();
    waitForAnOutput(watch);
    EXPECT_EQ(runs(), "1");
    watch.signal(SIGTERM);
    EXPECT_EQ(watch.wait().exitCode, 0);

    lock = FileLock::tryToTake(brindle.dataDirectory() / "check.lock");
    RunningProgram waiting(watching(output));
    std::this_thread::sleep_for(aWhile);
    waiting.signal(SIGTERM);
    EXPECT_EQ(waiting.wait().exitCode, 0);
}

TEST_F(Watch, ChecksNothingWhileChecksArePaused) {
    fs::create_directories(brindle.settingsFile().parent_path());
    std::ofstream(brindle.settingsFile()) << R"({"checksPaused": true})";
    const auto output = openTold();
    RunningProgram watch(watching(output));
    std::this_thread::sleep_for(aWhile);
    watch.signal(SIGTERM);
    EXPECT_EQ(watch.wait().exitCode, 0);
    EXPECT_EQ(runs(), "0");
}

TEST_F(Watch, SaysWhatKeepsALocationFromBeingChecked) {
    fs::remove_all(tree);
    const auto output = openTold();
    RunningProgram watch(watching(output));
    waitForAnOutput(watch);
    watch.signal(SIGTERM);
    const auto result = watch.wait();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(textTold(), HasSubstr(": 0 locations checked, no changes\n"));
    EXPECT_THAT(result.error, HasSubstr("“tree” couldn't be checked"));
}

TEST_F(Watch, AHistoryThatCannotBeUsedIsToldAtOnce) {
    std::ofstream(brindle.historyFile()) << "This is no database, but it is there.";
    const auto result = brindle.run({"watch"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.error, "");
}

}  // namespace
}  // namespace brindle
