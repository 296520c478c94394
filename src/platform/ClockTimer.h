#pragma once

#include "model/UnixTime.h"
#include "platform/FileDescriptor.h"

namespace brindle {

/// Waits for a time on the system's clock, and notices when that clock is set, or goes on after the computer
/// slept. Wakes no computer. Throws: std::system_error.
class ClockTimer {
public:
    ClockTimer();

    /// Readable when the wait is over, for either reason.
    [[nodiscard]] int descriptor() const { return timer_.get(); }

    /// Waits for `at`, in the place of what was waited for before. A time that has passed is over at once.
    void waitFor(UnixTime at);

private:
    FileDescriptor timer_;
};

}  // namespace brindle
