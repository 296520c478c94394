#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <cstddef>
#include <optional>
#include <string>

namespace brindle {

struct ChangesOptions {
    std::string day;         // "2026-03-07", "today", "yesterday"; empty: today, unless `since` is given
    std::string since;       // the first day of a period that ends today
    std::string folder;      // only what lies in it
    std::size_t limit = 20;  // how many changes are listed, largest first; 0: all
};

/// `brindle changes`: what checks recorded on a day or since a day.
[[nodiscard]] ExitCode runChanges(const Context& context, const ChangesOptions& options);

}  // namespace brindle
