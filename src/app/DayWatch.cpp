#include "app/DayWatch.h"

#include <algorithm>
#include <utility>

namespace brindle {

DayWatch::DayWatch(ClockAlarm& alarm, Clock now, std::function<Calendar()> calendar,
                   std::function<void()> dayChanged)
    : alarm_(alarm),
      now_(std::move(now)),
      calendar_(std::move(calendar)),
      dayChanged_(std::move(dayChanged)) {
    const Calendar current = calendar_();
    const UnixTime time = now_();
    today_ = current.day(time);
    wait(current, time);
}

void DayWatch::look() {
    const Calendar calendar = calendar_();
    const UnixTime now = now_();
    wait(calendar, now);
    const LocalDay day = calendar.day(now);
    if (std::exchange(today_, day) != day) dayChanged_();
}

void DayWatch::wait(const Calendar& calendar, UnixTime now) {
    constexpr UnixTime shortestWait = 1;  // also where the calendar knows of no later day
    const UnixTime midnight = calendar.time(calendar.addingDays(calendar.day(now), 1));
    alarm_.callAt(std::max(midnight, now + shortestWait), [this] { look(); });
}

}  // namespace brindle
