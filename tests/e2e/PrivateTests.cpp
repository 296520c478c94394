#include "e2e/Brindle.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
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

/// A call of the system that takes paths.
struct TracedCall {
    std::string line;
    std::string name;
    std::vector<fs::path> paths;  // absolute

    [[nodiscard]] bool isOneOf(std::initializer_list<std::string_view> names) const {
        return std::ranges::find(names, name) != names.end();
    }
    [[nodiscard]] bool has(std::string_view flag) const { return line.find(flag) != line.npos; }
    [[nodiscard]] bool opens() const { return isOneOf({"open", "openat", "openat2", "creat"}); }
    [[nodiscard]] bool onlyReads() const {
        if (opens())
            return name != "creat" && !has("O_WRONLY") && !has("O_RDWR") && !has("O_CREAT") &&
                   !has("O_TRUNC");
        return isOneOf({"execve", "access", "faccessat", "faccessat2", "stat", "lstat", "statx", "newfstatat",
                        "statfs", "readlink", "readlinkat", "getcwd", "getxattr", "lgetxattr"});
    }
};

/// The texts in quotation marks as paths, each below the folder that an open descriptor before it stands for.
std::vector<fs::path> pathsIn(std::string_view line) {
    std::vector<fs::path> paths;
    auto begin = line.find('"');
    while (begin != line.npos) {
        const auto end = line.find('"', begin + 1);
        const auto before = line.substr(0, begin);
        std::string_view folder;
        if (before.ends_with(">, ")) {
            folder = before.substr(before.rfind('<') + 1);
            folder.remove_suffix(3);
        }
        paths.push_back(fs::path(folder) / line.substr(begin + 1, end - begin - 1));
        begin = end == line.npos ? end : line.find('"', end + 1);
    }
    return paths;
}

/// Reads what strace(1) wrote: "NUMBER NAME(ARGUMENTS". A call that another thread's interrupts has its
/// arguments in its first half; the second one, like all other lines, has no name in that place.
std::vector<TracedCall> tracedCalls(const fs::path& trace) {
    std::vector<TracedCall> calls;
    std::ifstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        const auto begin = line.find_first_not_of("0123456789 ");
        const auto end = line.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789", begin);
        if (end == line.npos || line[end] != '(') continue;
        calls.push_back({.line = line, .name = line.substr(begin, end - begin), .paths = pathsIn(line)});
    }
    return calls;
}

bool isAtOrBelow(const fs::path& path, const fs::path& folder) {
    const fs::path plain = path.lexically_normal();
    return plain == folder || plain.native().starts_with(folder.native() + "/");
}

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

        int opened = 0;
        for (const TracedCall& call : tracedCalls(trace)) {
            EXPECT_FALSE(call.isOneOf({"socket", "socketpair", "connect"})) << call.line;
            for (const fs::path& path : call.paths) {
                if (call.opens() && isAtOrBelow(path, tree)) {
                    EXPECT_TRUE(call.has("O_DIRECTORY") || call.has("O_PATH")) << call.line;
                    ++opened;
                }
                // A thread is named by writing to a file of the process itself.
                EXPECT_TRUE(call.onlyReads() || isAtOrBelow(path, brindle.dataDirectory()) ||
                            isAtOrBelow(path, "/proc/self"))
                    << call.line;
            }
        }
        EXPECT_GE(opened, 6) << "the test sees the walk";
    }
}

}  // namespace
}  // namespace brindle
