#pragma once

#include "model/Calendar.h"

namespace brindle {

/// How many days of history are kept and shown, today included.
inline constexpr int keptDays = 90;

/// The earliest day that is kept.
[[nodiscard]] inline LocalDay firstKeptDay(const Calendar& calendar, const LocalDay& today) {
    return calendar.addingDays(today, 1 - keptDays);
}

}  // namespace brindle
