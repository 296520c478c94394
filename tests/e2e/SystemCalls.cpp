#include "e2e/SystemCalls.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string_view>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// The calls that take paths and change nothing, by name; opening a file is judged by its flags.
const std::set<std::string_view> readingCalls{
    "execve", "access",     "faccessat", "faccessat2", "stat",      "lstat",      "statx",
    "statfs", "newfstatat", "open",      "openat",     "openat2",   "getcwd",     "readlink",
    "chdir",  "readlinkat", "getxattr",  "lgetxattr",  "listxattr", "llistxattr", "inotify_add_watch",
};

/// The calls about connections; whom a connection leads to is told by what makes it.
const std::set<std::string_view> connectionCalls{
    "socket",   "socketpair", "connect",    "accept",     "accept4",     "bind",
    "listen",   "sendto",     "recvfrom",   "sendmsg",    "recvmsg",     "sendmmsg",
    "recvmmsg", "shutdown",   "getsockopt", "setsockopt", "getsockname", "getpeername"};

}  // namespace

bool SystemCalls::Call::opensWithoutReading() const {
    return line.find("O_DIRECTORY") != line.npos || line.find("O_PATH") != line.npos;
}

bool SystemCalls::Call::writes() const {
    if (connectionCalls.contains(name)) return false;
    static const std::regex flags("O_WRONLY|O_RDWR|O_CREAT|O_TRUNC");
    return !readingCalls.contains(name) || std::regex_search(line, flags);
}

bool SystemCalls::Call::leadsOutside() const {
    if (line.find("AF_INET") != line.npos) return true;
    // Programs of this computer, and the kernel.
    return name == "socket" && line.find("AF_UNIX") == line.npos && line.find("AF_NETLINK") == line.npos;
}

ProgramLaunch SystemCalls::traced(ProgramLaunch launch, const fs::path& trace) {
    launch.setVariable("ASAN_OPTIONS", "detect_leaks=0");  // whose search would be a second tracer
    const std::vector<std::string> strace{"strace", "-f", "-y", "-s", "4096", "-e", "trace=%file,%network",
                                          "-o",     trace};
    launch.arguments.insert(launch.arguments.begin(), strace.begin(), strace.end());
    return launch;
}

std::vector<SystemCalls::Call> SystemCalls::in(const fs::path& trace) {
    // "NUMBER NAME(ARGUMENTS": a call that another thread's interrupts has its arguments in the first half.
    const std::regex begin(R"(^\d+ +(\w+)\()");
    std::vector<Call> calls;
    std::ifstream lines(trace);
    std::smatch call;
    for (std::string line; std::getline(lines, line);)
        if (std::regex_search(line, call, begin)) calls.push_back({call[1], line});
    return calls;
}

int expectPrivate(const std::vector<SystemCalls::Call>& calls, const fs::path& tree,
                  const std::vector<fs::path>& own) {
    int opened = 0;
    for (const SystemCalls::Call& call : calls) {
        EXPECT_FALSE(call.leadsOutside()) << call.line;
        // A thread is named by writing to a file of the process itself.
        const bool isOwn = call.isAbout("\"/proc/self/") ||
                           std::ranges::any_of(own, [&](const fs::path& path) { return call.isAbout(path); });
        EXPECT_TRUE(isOwn || !call.writes()) << call.line;
        if (!call.name.starts_with("open") || !call.isAbout(tree)) continue;
        EXPECT_TRUE(call.opensWithoutReading()) << call.line;
        ++opened;
    }
    return opened;
}

}  // namespace brindle
