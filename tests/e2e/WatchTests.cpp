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

class Watch : public testing::Test {
protected:
    Watch() {
        writeFile(tree / "a", 10);
        EXPECT_EQ(brindle.run({"include", tree}).exitCode, 0);
    }

    /// Until it has told something, or for a while.
    [[nodiscard]] ProgramResult watchUntilItTells(int signal = SIGTERM, bool isSilent = false) const {
        const fs::path told = folder.path() / "told";
        const FileDescriptor output(::open(told.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
        ProgramLaunch launch = brindle.launch({"watch"});
        launch.output = output.get();
        RunningProgram watch(launch);
        if (isSilent) std::this_thread::sleep_for(std::chrono::milliseconds(400));
        while (!isSilent && watch.isRunning() && fs::file_size(told) == 0) std::this_thread::yield();
        watch.signal(signal);
        auto result = watch.wait();
        EXPECT_EQ(result.exitCode, 0);
        std::ifstream file(told);
        result.output = {std::istreambuf_iterator<char>(file), {}};
        return result;
    }
    void expectNothingChecked() const {
        const auto result = watchUntilItTells(SIGTERM, true);
        EXPECT_EQ(result.output + result.error, "");
        EXPECT_EQ(runs(), "0");
    }
    [[nodiscard]] std::string runs() const {
        return Records(brindle).value("SELECT COUNT(*) FROM scan_runs");
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(Watch, ChecksAtOnceTellsALineAndEndsWellWhenAsked) {
    for (const int signal : {SIGTERM, SIGINT})
        EXPECT_THAT(watchUntilItTells(signal).output, MatchesRegex(".*: 1 location checked, no changes\n"));
    EXPECT_EQ(runs(), "2");

    fs::remove_all(tree);
    const auto result = watchUntilItTells();
    EXPECT_THAT(result.output, HasSubstr(": 0 locations checked, no changes\n"));
    EXPECT_THAT(result.error, HasSubstr("“tree” couldn't be checked"));
}

TEST_F(Watch, ChecksNothingWhileAnotherProgramDoesOrChecksArePaused) {
    {
        const auto lock = FileLock::tryToTake(brindle.dataDirectory() / "check.lock");
        ASSERT_TRUE(lock);
        expectNothingChecked();
    }
    fs::create_directories(brindle.settingsFile().parent_path());
    std::ofstream(brindle.settingsFile()) << R"({"checksPaused": true})";
    expectNothingChecked();
}

}  // namespace
}  // namespace brindle
