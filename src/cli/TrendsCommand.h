#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>

namespace brindle {

struct TrendsOptions {
    std::string range;          // "week", "month", "quarter"
    std::string day = "today";  // the last one
    std::string location;       // its path or its name; empty: all of them
    bool asCSV = false;         // a row a day
};

/// `brindle trends`: the days that end with one as a chart, what they add up to beside the days before, and
/// how the drives fill.
[[nodiscard]] ExitCode runTrends(const Context& context, const TrendsOptions& options);

}  // namespace brindle
