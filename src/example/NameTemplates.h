#pragma once

#include "example/RandomSource.h"
#include "model/Calendar.h"

#include <string>
#include <string_view>

namespace brindle {

/// The name of a file that a check found at `observedAt`, which lies on `day`. In the template stand
/// "{date}", "{time}" and "{mmdd}" for that moment, one value each, and "{n4}", "{n3}", "{n}" and "{hex}" for
/// numbers drawn anew for every occurrence. The seconds of the time are drawn whether it has a time or not.
[[nodiscard]] std::string expandedName(std::string_view nameTemplate, const LocalDay& day,
                                       UnixTime observedAt, const Calendar& calendar, RandomSource& random);

}  // namespace brindle
