#pragma once

#include "model/UnixTime.h"

#include <optional>

namespace brindle {

/// Whether automatic checks have one to make: the first at once, then one every interval, counted from the
/// beginning of the last. The clock is that of the calendar, which goes on while the computer sleeps; one
/// that was set back makes a check due rather than put it off.
[[nodiscard]] inline bool isCheckDue(UnixTime now, std::optional<UnixTime> lastBegin, int intervalMinutes) {
    return !lastBegin || now < *lastBegin || now >= *lastBegin + 60.0 * intervalMinutes;
}

}  // namespace brindle
