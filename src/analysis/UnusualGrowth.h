#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace brindle {

/// Whether a folder grew unusually on a day, judged by nothing but its own past. `growth` and `past` are net
/// bytes of a day, negative where more was freed; `past` has every earlier day that is known, in any order.
///
/// It has to be 1 GB or more, with at least 14 days to compare it with. It has to stand out from them twice:
/// above the growth of 19 in 20 of the days, so that what happens now and then is no news; and above their
/// median by more than five of their usual deviations (the median of the deviations, as a share of a normal
/// distribution), so that in a folder whose days differ much a day must differ more.
///
/// Gives what 19 in 20 of the days stayed at or below, never negative; nothing when the day is not unusual.
[[nodiscard]] std::optional<std::int64_t> unusualGrowth(std::int64_t growth, std::vector<std::int64_t> past);

}  // namespace brindle
