#pragma once

#include "model/Cancellation.h"
#include "platform/FileLock.h"

#include <optional>
#include <stdexcept>
#include <string>

namespace brindle {

/// Another program checks this history, or changes its locations. what() is the sentence for the user.
class RunLocked : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One program at a time checks a history or changes its locations, so that no check works on locations that
/// are not there any more. Reading needs no lock.
class RunLock {
public:
    enum class WhenTaken { refuse, wait };

    /// Makes the data directory if need be. Throws: RunLocked; Cancelled while it waits; std::system_error.
    RunLock(const std::string& dataDirectory, WhenTaken whenTaken, const CancellationFlag& cancellation);

private:
    FileLock lock_;
};

/// What to tell the user while another program has the lock; nothing when none has. Keeps nobody from it.
/// Throws: std::system_error.
[[nodiscard]] std::optional<std::string> otherProgramText(const std::string& dataDirectory);

}  // namespace brindle
