#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"
#include "cli/PeriodOptions.h"

#include <cstddef>
#include <optional>
#include <string>

namespace brindle {

struct ChangesOptions {
    PeriodOptions period;
    std::string folder;      // only what lies in it
    std::size_t limit = 20;  // how many changes are listed, largest first; 0: all
};

/// `brindle changes`: what checks recorded on a day or in a period.
[[nodiscard]] ExitCode runChanges(const Context& context, const ChangesOptions& options);

}  // namespace brindle
