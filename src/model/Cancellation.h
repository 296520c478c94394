#pragma once

#include <exception>
#include <mutex>

namespace brindle {

/// Asks a walk to stop. Set from any thread; the only state that a walk shares with other threads.
class CancellationFlag {
public:
    void set() {
        const std::scoped_lock guard(lock_);
        state_ = true;
    }
    [[nodiscard]] bool isSet() const {
        const std::scoped_lock guard(lock_);
        return state_;
    }

private:
    mutable std::mutex lock_;
    bool state_ = false;
};

/// Thrown by whatever was stopped by its CancellationFlag.
class Cancelled : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "Stopped."; }
};

}  // namespace brindle
