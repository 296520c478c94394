#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>
#include <vector>

namespace brindle {

/// `brindle check [FOLDER…]`: includes the folders that are not included yet and checks them, or checks
/// every location when none is named. A folder that was included here and could not be checked is forgotten
/// again.
[[nodiscard]] ExitCode runCheck(const Context& context, const std::vector<std::string>& folders);

}  // namespace brindle
