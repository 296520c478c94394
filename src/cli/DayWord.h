#pragma once

#include "model/Calendar.h"

#include <string>

namespace brindle {

/// The day that a person names: "2026-03-07", "today", "yesterday". Throws: UsageError.
[[nodiscard]] LocalDay dayNamed(const std::string& text, const Calendar& calendar, const LocalDay& today);

/// The same, and UsageError for a day that is still to come.
[[nodiscard]] LocalDay pastDayNamed(const std::string& text, const Calendar& calendar, const LocalDay& today);

}  // namespace brindle
