#include "checks/RunLock.h"

#include "model/Translation.h"
#include "platform/Paths.h"
#include "platform/PrivateFiles.h"

#include <chrono>
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
    return filled(translated("Another program (process {}) is using this storage history. Try again later."),
                  *holder);
}

}  // namespace

/// One holder among those who share the lock. Taken and given back under the mutex, so that nobody here finds
/// the file still locked by a holder who is just leaving.
class RunLock::Hold {
public:
    /// Nothing while another program has the lock.
    static std::shared_ptr<const Hold> tryToTake(std::shared_ptr<RunLockSource::Shared> shared,
                                                 const std::string& path) {
        const std::scoped_lock guard(shared->mutex);
        if (!shared->lock) shared->lock = FileLock::tryToTake(path);
        if (!shared->lock) return nullptr;
        ++shared->holders;
        return std::shared_ptr<const Hold>(new Hold(std::move(shared)));
    }
    ~Hold() {
        const std::scoped_lock guard(shared_->mutex);
        if (--shared_->holders == 0) shared_->lock.reset();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    explicit Hold(std::shared_ptr<RunLockSource::Shared> shared) : shared_(std::move(shared)) {}

    std::shared_ptr<RunLockSource::Shared> shared_;
};

RunLock RunLockSource::take(RunLock::WhenTaken whenTaken, const CancellationFlag& cancellation) {
    createPrivateDirectory(dataDirectory_);
    const std::string path = lockFile(dataDirectory_);
    for (;;) {
        if (auto hold = RunLock::Hold::tryToTake(shared_, path)) return RunLock(std::move(hold));
        if (whenTaken == RunLock::WhenTaken::refuse) throw RunLocked(lockedSentence(path));
        if (cancellation.isSet()) throw Cancelled();
        std::this_thread::sleep_for(betweenTries);
    }
}

std::optional<std::string> otherProgramText(const std::string& dataDirectory) {
    const std::string path = lockFile(dataDirectory);
    if (!FileLock::isTaken(path)) return {};
    const auto holder = FileLock::lastHolder(path);
    if (!holder) return translated("Another program is checking now.");
    return filled(translated("Another program (process {}) is checking now."), *holder);
}

}  // namespace brindle
