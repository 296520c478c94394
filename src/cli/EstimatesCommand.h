#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <optional>

namespace brindle {

/// `brindle estimates [on|off]`: whether checks estimate the history from before a location was included, or
/// switches that on or off. Off removes at once what was estimated. Left to the window while one runs.
[[nodiscard]] ExitCode runEstimates(const Context& context, std::optional<bool> wanted);

}  // namespace brindle
