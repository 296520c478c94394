#pragma once

#include <functional>

namespace brindle {

/// A point in time: seconds since 1970-01-01 00:00:00 UTC, with fractions; negative before.
using UnixTime = double;

/// Tells the current time. Passed in wherever time matters, so that a test can be any day it likes.
using Clock = std::function<UnixTime()>;

/// The system's clock.
[[nodiscard]] UnixTime systemNow();

}  // namespace brindle
