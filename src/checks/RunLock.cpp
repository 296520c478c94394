#include "checks/RunLock.h"

#include "model/Translation.h"
#include "platform/Paths.h"
#include "platform/PrivateFiles.h"

#include <chrono>
#include <fmt/format.h>
#include <thread>

namespace brindle {
namespace {

constexpr std::chrono::milliseconds betweenTries{200};

std::string lockFile(const std::string& dataDirectory) {
    return joinedPath(dataDirectory, "check.lock");
}

std::string lockedSentence(const std::string& path) {
    const auto holder = FileLock::lastHolder(path);
    if (!holder) return translated("Another program is using this storage history. Try again later.");
    return fmt::format(fmt::runtime(translated(
                           "Another program (process {}) is using this storage history. Try again later.")),
                       *holder);
}

FileLock take(const std::string& dataDirectory, RunLock::WhenTaken whenTaken,
              const CancellationFlag& cancellation) {
    createPrivateDirectory(dataDirectory);
    const std::string path = lockFile(dataDirectory);
    for (;;) {
        if (auto lock = FileLock::tryToTake(path)) return std::move(*lock);
        if (whenTaken == RunLock::WhenTaken::refuse) throw RunLocked(lockedSentence(path));
        if (cancellation.isSet()) throw Cancelled();
        std::this_thread::sleep_for(betweenTries);
    }
}

}  // namespace

RunLock::RunLock(const std::string& dataDirectory, WhenTaken whenTaken, const CancellationFlag& cancellation)
    : lock_(take(dataDirectory, whenTaken, cancellation)) {}

std::optional<std::string> otherProgramText(const std::string& dataDirectory) {
    const std::string path = lockFile(dataDirectory);
    if (!FileLock::isTaken(path)) return {};
    const auto holder = FileLock::lastHolder(path);
    if (!holder) return translated("Another program is checking now.");
    return fmt::format(fmt::runtime(translated("Another program (process {}) is checking now.")), *holder);
}

}  // namespace brindle
