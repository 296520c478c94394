#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

namespace brindle {

/// `brindle locations`: the included locations with what the last check knows of them.
[[nodiscard]] ExitCode runLocations(const Context& context);

}  // namespace brindle
