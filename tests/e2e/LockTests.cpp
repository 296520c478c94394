#include "e2e/Records.h"
#include "support/OtherProgram.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A history that another program is at work on.
class LockedHistory : public testing::Test {
protected:
    LockedHistory() {
        writeFile(tree / "a", 10);
        fs::create_directory(unchecked);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        EXPECT_EQ(brindle.run({"include", unchecked}).exitCode, 0);
        writeFile(tree / "b", 5);
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    fs::path unchecked = folder.path() / "unchecked";
    Brindle brindle;
};

TEST_F(LockedHistory, IsNotChangedAndCanBeRead) {
    const OtherProgram other(brindle.dataDirectory());
    const auto before = Records(brindle).everything();
    const fs::path more = folder.path() / "more";
    fs::create_directory(more);
    for (const auto& arguments : {std::vector<std::string>{"check"},
                                  {"check", "--json", more},
                                  {"include", more},
                                  {"remove", tree},
                                  {"forget", unchecked}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 5);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, HasSubstr("(process " + std::to_string(other.process()) + ")"));
    }
    EXPECT_EQ(Records(brindle).everything(), before);
    EXPECT_EQ(brindle.run({"locations"}).exitCode, 0);
    EXPECT_EQ(brindle.run({"changes"}).exitCode, 1);
    const auto status = brindle.run({"status"});
    EXPECT_EQ(status.exitCode, 0);
    EXPECT_THAT(status.error, HasSubstr("is checking now."));
    EXPECT_EQ(brindle.json({"status"})["otherProgramIsChecking"], true);
}

TEST_F(LockedHistory, IsWaitedForUntilItsHolderDies) {
    OtherProgram other(brindle.dataDirectory());
    RunningProgram patient(brindle.launch({"check", "--wait"}));
    RunningProgram stopped(brindle.launch({"check", "--wait"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_TRUE(patient.isRunning());
    stopped.signal(SIGINT);
    EXPECT_EQ(stopped.wait().exitCode, 130);
    EXPECT_TRUE(patient.isRunning());
    other.die();
    const auto result = patient.wait();
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("+5 bytes"));
}

}  // namespace
}  // namespace brindle
