#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <string_view>

#include "e2e/Brindle.h"

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
};

/// Reads what strace(1) wrote. A call that another thread's interrupts has its paths in its first half.
std::vector<TracedCall> tracedCalls(const fs::path& trace) {
    static const std::regex call(R"(^\d+ +(\w+)\()");
    static const std::regex path(R"re((?:(?:\d+|AT_FDCWD)<([^>]*)>, )?"((?:[^"\\]|\\.)*)")re");
    std::vector<TracedCall> calls;
    std::ifstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        std::smatch name;
        if (!std::regex_search(line, name, call)) continue;
        TracedCall traced{.line = line, .name = name[1], .paths = {}};
        for (std::sregex_iterator next(line.begin(), line.end(), path), end; next != end; ++next)
            traced.paths.push_back(fs::path((*next)[1].str()) / (*next)[2].str());
        calls.push_back(std::move(traced));
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
            const bool opens = call.isOneOf({"open", "openat", "openat2", "creat"});
            const bool onlyReads = call.isOneOf({"execve", "access", "faccessat", "faccessat2", "stat",
                                                 "lstat", "statx", "newfstatat", "statfs", "readlink",
                                                 "readlinkat", "getcwd", "chdir", "getxattr", "lgetxattr"}) ||
                                   (opens && !call.has("O_WRONLY") && !call.has("O_RDWR") &&
                                    !call.has("O_CREAT") && call.name != "creat");
            for (const fs::path& path : call.paths) {
                if (opens && isAtOrBelow(path, tree)) {
                    EXPECT_TRUE(call.has("O_DIRECTORY") || call.has("O_PATH")) << call.line;
                    ++opened;
                }
                EXPECT_TRUE(onlyReads || isAtOrBelow(path, brindle.dataDirectory()) ||
                            isAtOrBelow(path, "/proc/self"))
                    << call.line;
            }
        }
        EXPECT_GE(opened, 6) << "the test sees the walk";
    }
}

}  // namespace
}  // namespace brindle
