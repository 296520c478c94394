#pragma once

#include "app/Alarm.h"

#include <QTimer>

namespace brindle {

/// An alarm of the event loop that made it. It shares the wake-ups of others where it can, and keeps no
/// computer awake.
class CoarseAlarm : public Alarm {
public:
    CoarseAlarm();

    void callIn(std::chrono::milliseconds time, std::function<void()> callback) override;
    void cancel() override { timer_.stop(); }

private:
    QTimer timer_;
    std::function<void()> callback_;
};

}  // namespace brindle
