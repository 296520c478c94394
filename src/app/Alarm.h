#pragma once

#include <chrono>
#include <functional>

namespace brindle {

/// Calls back once, after a time.
class Alarm {
public:
    Alarm() = default;
    virtual ~Alarm() = default;
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;

    /// In the place of what it was set for before. May come a twentieth of the time early or late, and later
    /// by the time that the computer sleeps.
    virtual void callIn(std::chrono::milliseconds time, std::function<void()> callback) = 0;
    virtual void cancel() = 0;
};

}  // namespace brindle
