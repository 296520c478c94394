#pragma once

#include "model/Calendar.h"
#include "model/UnixTime.h"

#include <functional>

namespace brindle {

/// What tells the time and the day of what happens. Both are asked at each use: the clock goes on, and the
/// time zone may change.
struct DayClock {
    Clock now = systemNow;
    std::function<Calendar()> calendar = Calendar::current;
};

}  // namespace brindle
