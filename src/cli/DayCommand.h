#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>

namespace brindle {

/// `brindle day [DAY]`: what is known of a day ("2026-03-07", "today", "yesterday"), over all locations and
/// for each, and the folders that changed most.
[[nodiscard]] ExitCode runDay(const Context& context, const std::string& day);

}  // namespace brindle
