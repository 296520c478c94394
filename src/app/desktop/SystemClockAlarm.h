#pragma once

#include "app/DayWatch.h"
#include "platform/ClockTimer.h"

#include <QSocketNotifier>

namespace brindle {

/// An alarm of the event loop that made it.
class SystemClockAlarm : public ClockAlarm {
public:
    SystemClockAlarm();

    void callAt(UnixTime time, std::function<void()> callback) override;

private:
    ClockTimer timer_;
    QSocketNotifier isOver_;
    std::function<void()> callback_;
};

}  // namespace brindle
