#pragma once

#include <exception>
#include <memory>
#include <mutex>
#include <utility>

namespace brindle {

/// Asks a walk to stop. Set from any thread; the only state that a walk shares with other threads.
class CancellationFlag {
public:
    CancellationFlag() = default;
    /// One that is also set when `whole` is: for a part of what that one stops.
    explicit CancellationFlag(std::shared_ptr<const CancellationFlag> whole) : whole_(std::move(whole)) {}

    void set() {
        const std::scoped_lock guard(lock_);
        state_ = true;
    }
    [[nodiscard]] bool isSet() const {
        if (whole_ && whole_->isSet()) return true;
        const std::scoped_lock guard(lock_);
        return state_;
    }

private:
    const std::shared_ptr<const CancellationFlag> whole_;
    mutable std::mutex lock_;
    bool state_ = false;
};

/// Thrown by whatever was stopped by its CancellationFlag.
class Cancelled : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "Stopped."; }
};

}  // namespace brindle
