#include "e2e/Records.h"
#include "e2e/SystemCalls.h"
#include "support/TestMounts.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;

class Private : public testing::Test {
protected:
    Private() {
        for (int i = 0; i < 20; ++i) writeFile(tree / std::to_string(i % 5) / std::to_string(i), 10);
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

/// What is in a folder that somebody may be writing in: name to rights. "." is the folder itself.
std::map<std::string, fs::perms> rightsIn(const fs::path& folder) {
    std::map<std::string, fs::perms> rights;
    std::error_code error;
    const auto keep = [&](const std::string& name, const fs::path& path) {
        const auto status = fs::status(path, error);
        if (!error && fs::exists(status)) rights[name] = status.permissions();
    };
    keep(".", folder);
    for (fs::directory_iterator next(folder, error), end; !error && next != end; next.increment(error))
        keep(next->path().filename(), next->path());
    return rights;
}

TEST_F(Private, NobodyElseMayReadTheHistoryWhateverTheUmask) {
    std::map<std::string, fs::perms> seen;
    for (int round = 0; round < 10; ++round) {
        fs::remove_all(brindle.dataDirectory());
        ProgramLaunch launch = brindle.launch({"check", tree});
        launch.umask = 0;
        RunningProgram check(launch);
        while (check.isRunning())
            for (const auto& [name, rights] : rightsIn(brindle.dataDirectory())) seen[name] |= rights;
        EXPECT_EQ(check.wait().exitCode, 0);
    }
    seen.merge(rightsIn(brindle.dataDirectory()));
    EXPECT_TRUE(seen.contains("History.sqlite-wal")) << "the test looked too seldom";
    for (const auto& [name, rights] : seen)
        EXPECT_EQ(rights, name == "." ? fs::perms(0700) : fs::perms(0600)) << name;
}

TEST_F(Private, SettingsAreTheirOwnersAloneAndAStatementFollowsTheUmask) {
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    writeFile(tree / "new", 10);
    ASSERT_EQ(brindle.run({"check"}).exitCode, 0);
    const fs::path statement = folder.path() / "statement.csv";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"estimates", "on"}, {"export", "-o", statement}}) {
        ProgramLaunch launch = brindle.launch(arguments);
        launch.umask = 0;
        EXPECT_EQ(runProgram(launch).exitCode, 0);
    }
    for (const auto& [name, rights] : rightsIn(brindle.settingsFile().parent_path()))
        EXPECT_EQ(rights, name == "." ? fs::perms(0700) : fs::perms(0600)) << name;
    EXPECT_EQ(fs::status(statement).permissions(), fs::perms(0666));
}

TEST_F(Private, LinksPlantedAmongItsFilesLeadNowhere) {
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    const auto before = Records(brindle).everything();
    const fs::path victim = folder.path() / "victim";
    const auto contents = [&] {
        std::ifstream file(victim);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    std::ofstream(victim) << "mine";
    for (const std::string name : {"History.sqlite", "History.sqlite-wal", "History.sqlite-shm",
                                   "History.sqlite-journal", "check.lock"}) {
        SCOPED_TRACE(name);
        const fs::path planted = brindle.dataDirectory() / name;
        const fs::path aside = folder.path() / "aside";
        if (fs::exists(planted)) fs::rename(planted, aside);
        fs::create_symlink(victim, planted);
        const auto result = brindle.run({"check"});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << result.error;
        EXPECT_EQ(contents(), "mine");
        fs::remove(planted);
        if (fs::exists(aside)) fs::rename(aside, planted);
        EXPECT_EQ(Records(brindle).everything(), before);
    }
    ASSERT_EQ(brindle.run({"check"}).exitCode, 0);
}

TEST_F(Private, NoCommandOpensAFileOfTheLocationOrAConnectionOrWritesElsewhere) {
    const fs::path trace = folder.path() / "trace";
    const fs::path statement = folder.path() / "statement.csv";
    const fs::path copy = folder.path() / "copy";
    const fs::path other = folder.path() / "other";
    writeFile(other / "a", 10);
    const std::vector<fs::path> own{brindle.dataDirectory(),
                                    brindle.settingsFile().parent_path().parent_path(),
                                    statement,
                                    ".statement.csv.",
                                    copy,
                                    ".copy."};
    const auto expectPrivateRun = [&](const std::vector<std::string>& arguments) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = runProgram(SystemCalls::traced(brindle.launch(arguments), trace));
        EXPECT_EQ(result.exitCode, 0) << result.error;
        return expectPrivate(SystemCalls::in(trace), tree, own);
    };
    static_cast<void>(runProgram(SystemCalls::traced(brindle.launch({"--version"}), trace)));
    if (SystemCalls::in(trace).empty()) GTEST_SKIP() << "there is no strace, or it may not trace";

    expectPrivateRun({"include", tree});
    {
        const fs::path told = folder.path() / "told";
        const FileDescriptor output(::open(told.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        ProgramLaunch launch = SystemCalls::traced(brindle.launch({"watch"}), trace);
        launch.output = output.get();
        RunningProgram strace(launch);
        while (strace.isRunning() && fs::file_size(told) == 0) std::this_thread::yield();
        const fs::path process = fs::path("/proc") / std::to_string(strace.id());
        pid_t watch = 0;
        std::ifstream(process / "task" / std::to_string(strace.id()) / "children") >> watch;
        ASSERT_GT(watch, 0);
        ::kill(watch, SIGTERM);
        EXPECT_EQ(strace.wait().exitCode, 0);
        EXPECT_GE(expectPrivate(SystemCalls::in(trace), tree, own), 6);
    }
    EXPECT_GE(expectPrivateRun({"check"}), 6) << "the test sees the walk";
    // More than is compared in memory.
    for (int i = 0; i < 6000; ++i)
        fs::create_hard_link(tree / "0/0", tree / "0" / (std::string(120, 'x') + std::to_string(i)));
    EXPECT_GE(expectPrivateRun({"check"}), 6);
    EXPECT_TRUE(std::ranges::any_of(SystemCalls::in(trace), [&](const SystemCalls::Call& call) {
        return call.isAbout(brindle.dataDirectory() / "etilqs_");
    })) << "SQLite needed no temporary file";
    const std::vector<std::vector<std::string>> commands = {{"estimates", "on"},
                                                            {"check"},
                                                            {"status"},
                                                            {"locations"},
                                                            {"drives"},
                                                            {"day"},
                                                            {"changes"},
                                                            {"grew"},
                                                            {"trends", "week"},
                                                            {"export", "-o", statement},
                                                            {"include", other},
                                                            {"remove", other},
                                                            {"doctor"},
                                                            {"backup", copy},
                                                            {"restore", "--yes", copy}};
    for (const auto& command : commands) expectPrivateRun(command);
}

TEST_F(Private, ACheckLeavesTheTimesOfAccessAsTheyWere) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = folder.path() / "image";
    const fs::path drive = folder.path() / "drive";
    fs::create_directory(drive);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "there is no mkfs.ext4";
    const auto mount = TestMount::image(image, drive, "loop,strictatime");
    for (int i = 0; i < 20; ++i) writeFile(drive / std::to_string(i % 4) / std::to_string(i), 10);
    const auto times = [&] {
        std::map<std::string, std::int64_t> found;
        for (const auto& entry : fs::recursive_directory_iterator(drive)) {
            struct stat status {};
            ::lstat(entry.path().c_str(), &status);
            if (entry.is_regular_file())
                found[entry.path()] = status.st_atim.tv_sec * 1'000'000'000 + status.st_atim.tv_nsec;
        }
        return found;
    };
    const auto folderTime = [&] {
        struct stat status {};
        ::lstat((drive / "1").c_str(), &status);
        return status.st_atim.tv_sec * 1'000'000'000 + status.st_atim.tv_nsec;
    };
    const auto before = times();
    const auto folderBefore = folderTime();
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"estimates", "on"}, {"check", drive}, {"check"}})
        ASSERT_EQ(brindle.run(arguments).exitCode, 0);
    EXPECT_EQ(folderTime(), folderBefore);
    EXPECT_EQ(times(), before);

    std::string word;
    std::ifstream(drive / "0/0") >> word;
    EXPECT_NE(times(), before) << "the drive keeps no such times";
}

}  // namespace
}  // namespace brindle
