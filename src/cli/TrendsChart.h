#pragma once

#include "analysis/Trends.h"
#include "cli/Output.h"

namespace brindle {

/// Prints a row a day, or a row a week where there are too many days for a screen: what was added and freed,
/// in figures and as bars. What is not known is no bar, but says why.
void printChart(Output& output, const Trend& trend, const HistorySnapshot& snapshot,
                const LocationScope& scope, const Calendar& calendar);

}  // namespace brindle
