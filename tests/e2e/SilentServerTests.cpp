#include "e2e/Brindle.h"
#include "support/TestMounts.h"

#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <sys/mount.h>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Arguments = std::vector<std::string>;

/// A computer whose folder is mounted in the midst of what is included, and which does not answer any more.
class ASilentServer : public testing::Test {
protected:
    void SetUp() override {
        if (!enterOwnMountTable()) GTEST_SKIP() << "mounting is not allowed here";
        if (std::string_view(BRINDLE_BROKEN_FILE_SYSTEM).empty()) GTEST_SKIP() << "built without libfuse3";
        for (const auto* name : {"covered", "sibling", "other"}) writeFile(tree / name / "file", 10);
        fs::create_directory_symlink(server, folder.path() / "link");
        // The trash is a folder of the server, as some people have it.
        fs::create_directories(brindle.home() / "share");
        fs::create_directory_symlink(server / "deep", brindle.home() / "share/Trash");
        ASSERT_EQ(brindle.run({"check", server, tree / "sibling"}).exitCode, 0);
    }
    // A server whose program ended fails, and holds nobody up; a mount behind it goes with it.
    void TearDown() override {
        program.reset();
        ::umount2(server.c_str(), MNT_DETACH);
    }

    /// False when file systems in user space cannot be mounted here.
    bool mountServer(const std::string& knownAs) {
        program = std::make_unique<RunningProgram>(
            ProgramLaunch{.arguments = {BRINDLE_BROKEN_FILE_SYSTEM, fault(), server, knownAs}});
        while (!fs::exists(server / "deep")) {
            if (!program->isRunning()) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }
    void fallSilent() const { std::ofstream(fault()) << "silent"; }

    /// The result of a command that must end soon, and never name anything on the server to the system.
    [[nodiscard]] ProgramResult run(const Arguments& arguments) const {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const fs::path trace = folder.path() / "trace";
        ProgramLaunch launch = brindle.launch(arguments);
        launch.setVariable("ASAN_OPTIONS", "detect_leaks=0");  // whose search would be a second tracer
        if (hasTracer) {
            const Arguments tracer{"strace", "-f", "-s", "4096", "-e", "trace=%file", "-o", trace};
            launch.arguments.insert(launch.arguments.begin(), tracer.begin(), tracer.end());
        }
        RunningProgram command(launch);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (command.isRunning() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        if (command.isRunning()) {
            ADD_FAILURE() << "the command hangs";
            return {};
        }
        std::ifstream lines(trace);
        for (std::string line; std::getline(lines, line);) {
            const bool isAboutServer = line.find(server.filename()) != line.npos;
            const bool touchesNothing =
                line.find("execve(") != line.npos || line.find("readlink") != line.npos;
            EXPECT_FALSE(isAboutServer && !touchesNothing) << line;
        }
        return command.wait();
    }

    void expectRefused(const Arguments& arguments) const {
        const auto result = run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.error, "Brindle can only check folders on drives connected to this computer.\n");
    }

    [[nodiscard]] fs::path fault() const { return folder.path() / "fault"; }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    fs::path server = tree / "covered";
    Brindle brindle;
    std::unique_ptr<RunningProgram> program;
    std::optional<TestMount> drive;  // the way to which leads over the server
    const bool hasTracer = runProgram({.arguments = {"strace", "-o", "/dev/null", "true"},
                                       .environment = {"PATH=/usr/bin:/bin"}})
                               .exitCode == 0;
};

TEST_F(ASilentServer, HoldsNoCommandUp) {
    if (!mountServer("fsname=ann@server.example:/home,subtype=sshfs"))
        GTEST_SKIP() << "a file system in user space cannot be mounted here";
    if (makeImage(folder.path() / "image", "ext4"))
        drive.emplace(TestMount::image(folder.path() / "image", server / "deep"));
    fallSilent();

    EXPECT_EQ(run({"drives"}).exitCode, 0);
    EXPECT_EQ(run({"locations"}).exitCode, 0);
    EXPECT_EQ(run({"status"}).exitCode, 0);
    EXPECT_EQ(run({"day"}).exitCode, 0);
    EXPECT_EQ(run({"changes"}).exitCode, 1);
    EXPECT_EQ(run({"estimates", "off"}).exitCode, 0);
    expectRefused({"include", server / "a"});
    expectRefused({"include", server / "deep"});
    expectRefused({"include", folder.path() / "link"});
    expectRefused({"check", server / "not/there"});
    EXPECT_EQ(run({"include", tree / "other"}).exitCode, 0);

    const auto checked = run({"check", "--json"});
    EXPECT_EQ(checked.exitCode, 4);
    Arguments outcomes;
    const auto report = nlohmann::json::parse(checked.output, nullptr, false);
    for (const auto& location : report["locations"]) outcomes.push_back(location["outcome"]);
    EXPECT_THAT(outcomes, testing::UnorderedElementsAre("disconnected", "baseline", "check"));

    // Looked for among what lies beside it, the server included.
    fs::rename(tree / "sibling", tree / "renamed");
    const auto renamed = run({"check", tree / "sibling"});
    EXPECT_EQ(renamed.exitCode, 0) << renamed.error;
    EXPECT_THAT(renamed.output, HasSubstr("No changes"));

    const auto around = run({"check", tree});
    EXPECT_EQ(around.exitCode, 0) << around.error;
    EXPECT_THAT(around.error, HasSubstr("“tree” contains 3 locations"));
    EXPECT_EQ(run({"remove", server}).exitCode, 0);
}

}  // namespace
}  // namespace brindle
