#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

namespace brindle {

/// `brindle drives`: the mounted drives of this computer, and how full they are.
[[nodiscard]] ExitCode runDrives(const Context& context);

}  // namespace brindle
