#pragma once

#include "model/Cancellation.h"
#include "platform/FileLock.h"

#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>

namespace brindle {

/// Another program checks this history, or changes its locations. what() is the sentence for the user.
class RunLocked : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One program at a time checks a history or changes its locations, so that no check works on locations that
/// are not there any more. Reading needs no lock. Copies hold the same lock, which goes with the last of
/// them.
class RunLock {
public:
    enum class WhenTaken { refuse, wait };

private:
    friend class RunLockSource;
    class Hold;
    explicit RunLock(std::shared_ptr<const Hold> hold) : hold_(std::move(hold)) {}

    std::shared_ptr<const Hold> hold_;
};

/// Where this program gets the lock of one history. Whoever asks while somebody else in this program has it
/// shares it: a window takes a location away while its own check runs.
/// Thread: any.
class RunLockSource {
public:
    explicit RunLockSource(std::string dataDirectory) : dataDirectory_(std::move(dataDirectory)) {}

    /// Makes the data directory if need be. Throws: RunLocked; Cancelled while it waits; std::system_error.
    [[nodiscard]] RunLock take(RunLock::WhenTaken whenTaken, const CancellationFlag& cancellation);

private:
    friend class RunLock::Hold;

    /// The lock while there are holders, who may outlive the source.
    struct Shared {
        std::mutex mutex;
        std::optional<FileLock> lock;
        int holders = 0;
    };

    std::string dataDirectory_;
    std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};

/// What to tell the user while another program has the lock; nothing when none has. Keeps nobody from it.
/// Throws: std::system_error.
[[nodiscard]] std::optional<std::string> otherProgramText(const std::string& dataDirectory);

}  // namespace brindle
