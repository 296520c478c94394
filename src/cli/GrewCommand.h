#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"
#include "cli/PeriodOptions.h"

#include <string>

namespace brindle {

struct GrewOptions {
    PeriodOptions period;
    std::string over;    // a size as a person writes it; empty: no limit
    std::string folder;  // only what lies in it
    bool asCSV = false;
};

/// `brindle grew`: the folders that grew in a period, as a tree. With a limit, limitPassed means that
/// something grew by more; without one the command always succeeds, also when nothing grew.
[[nodiscard]] ExitCode runGrew(const Context& context, const GrewOptions& options);

}  // namespace brindle
