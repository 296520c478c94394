#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

namespace brindle {

/// `brindle status`: every tracked location as its last check left it, what today brought, and how full the
/// drives were. Reads the history only: no drive is waited for.
[[nodiscard]] ExitCode runStatus(const Context& context);

}  // namespace brindle
