#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>

namespace brindle {

struct DayOptions {
    std::string day = "today";  // "2026-03-07", "today", "yesterday"
    bool asCSV = false;         // the folders that changed most, as rows
};

/// `brindle day`: what is known of a day, over all locations and for each, and the folders that changed most.
[[nodiscard]] ExitCode runDay(const Context& context, const DayOptions& options);

}  // namespace brindle
