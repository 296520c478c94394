#include "e2e/Brindle.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
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

/// The calls that take paths and change nothing, by name; opening a file is judged by its flags.
const std::set<std::string> readingCalls{"execve",    "access",    "faccessat",  "faccessat2", "stat",
                                         "lstat",     "statx",     "newfstatat", "statfs",     "open",
                                         "openat",    "openat2",   "getcwd",     "readlink",   "getxattr",
                                         "lgetxattr", "readlinkat"};

TEST_F(Private, ACheckOpensNoFileOfTheLocationAndNoConnectionAndWritesNowhereElse) {
    const fs::path trace = folder.path() / "trace";
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"check", tree}, {"check"}}) {
        ProgramLaunch launch = brindle.launch(arguments);
        launch.setVariable("ASAN_OPTIONS", "detect_leaks=0");  // whose search would be a second tracer
        const std::vector<std::string> strace{
            "strace", "-f", "-y", "-s", "4096", "-e", "trace=%file,%network", "-o", trace};
        launch.arguments.insert(launch.arguments.begin(), strace.begin(), strace.end());
        const auto result = runProgram(launch);
        if (result.exitCode == 127 || !fs::exists(trace) || fs::file_size(trace) == 0)
            GTEST_SKIP() << "there is no strace, or it may not trace: " << result.error;
        ASSERT_EQ(result.exitCode, 0) << result.error;

        // "NUMBER NAME(ARGUMENTS": a call that another thread's interrupts has its arguments in the first
        // half.
        const std::regex begin(R"(^\d+ +(\w+)\()");
        const std::regex writing("O_WRONLY|O_RDWR|O_CREAT|O_TRUNC");
        int opened = 0;
        std::ifstream lines(trace);
        std::smatch call;
        for (std::string line; std::getline(lines, line);) {
            if (!std::regex_search(line, call, begin)) continue;
            const auto isAbout = [&line](const std::string& path) { return line.find(path) != line.npos; };
            // A thread is named by writing to a file of the process itself.
            const bool isOwn = isAbout(brindle.dataDirectory().native()) || isAbout("\"/proc/self/");
            EXPECT_TRUE(isOwn || (readingCalls.contains(call[1]) && !std::regex_search(line, writing)))
                << line;
            if (call[1].str().starts_with("open") && isAbout(tree.native())) {
                EXPECT_TRUE(isAbout("O_DIRECTORY") || isAbout("O_PATH")) << line;
                ++opened;
            }
        }
        EXPECT_GE(opened, 6) << "the test sees the walk";
    }
}

}  // namespace
}  // namespace brindle
