#pragma once

#include <chrono>

namespace brindle {

/// Time since the computer was started, the time that it slept included. It is never set, and knows nothing
/// of time zones: the clock for measuring how long something is ago.
[[nodiscard]] std::chrono::milliseconds timeSinceBoot();

}  // namespace brindle
