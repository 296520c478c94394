#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

namespace brindle {

/// `brindle watch`: checks every location at once and then on the interval of the settings, one line a run,
/// until a signal asks it to end. A run waits for another program that checks.
[[nodiscard]] ExitCode runWatch(const Context& context);

}  // namespace brindle
