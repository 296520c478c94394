#pragma once

#include "app/Alarm.h"
#include "model/UnixTime.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace brindle {

/// A computer's clock and its one timer, which go on when the test says so. Shared, for the timer belongs to
/// the program and the clock outlives it.
class TestTime {
public:
    explicit TestTime(UnixTime now) : now_(now) {}

    [[nodiscard]] UnixTime now() const { return now_; }
    [[nodiscard]] std::chrono::milliseconds uptime() const { return uptime_; }

    /// Rings what falls due.
    void pass(std::chrono::seconds time) {
        uptime_ += time;
        now_ += static_cast<double>(time.count());
        if (callback_ && due_ <= uptime_) std::exchange(callback_, nullptr)();
    }

    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm() { return std::make_unique<TestAlarm>(*this); }

private:
    class TestAlarm final : public Alarm {
    public:
        explicit TestAlarm(TestTime& time) : time_(time) {}
        ~TestAlarm() override { TestAlarm::cancel(); }
        TestAlarm(const TestAlarm&) = delete;
        TestAlarm& operator=(const TestAlarm&) = delete;

        void callIn(std::chrono::milliseconds time, std::function<void()> callback) override {
            time_.due_ = time_.uptime_ + time;
            time_.callback_ = std::move(callback);
        }
        void cancel() override { time_.callback_ = nullptr; }

    private:
        TestTime& time_;
    };

    UnixTime now_;
    std::chrono::milliseconds uptime_{0};
    std::chrono::milliseconds due_{0};
    std::function<void()> callback_;
};

}  // namespace brindle
