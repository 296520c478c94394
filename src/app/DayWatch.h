#pragma once

#include "model/Calendar.h"
#include "model/LocalDay.h"
#include "model/UnixTime.h"

#include <functional>

namespace brindle {

/// Calls back once, at a time of the system's clock; before that when the clock is set or the computer wakes.
class ClockAlarm {
public:
    ClockAlarm() = default;
    virtual ~ClockAlarm() = default;
    ClockAlarm(const ClockAlarm&) = delete;
    ClockAlarm& operator=(const ClockAlarm&) = delete;

    /// In the place of what it was set for before. Comes with a later turn of the event loop, never at once.
    virtual void callAt(UnixTime time, std::function<void()> callback) = 0;
};

/// Tells when it is another day: at local midnight, and when the clock or the time zone was set so.
/// Thread: that of the alarm.
class DayWatch {
public:
    /// `calendar` gives the user's calendar as it is now. `alarm` outlives the watch.
    DayWatch(ClockAlarm& alarm, Clock now, std::function<Calendar()> calendar,
             std::function<void()> dayChanged);

    /// Looks at once, in particular after the time zone changed.
    void look();

private:
    void wait(const Calendar& calendar, UnixTime now);

    ClockAlarm& alarm_;
    const Clock now_;
    const std::function<Calendar()> calendar_;
    const std::function<void()> dayChanged_;
    LocalDay today_;
};

}  // namespace brindle
