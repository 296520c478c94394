#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>

namespace brindle {

/// `brindle remove PATH`: stops tracking a location; what was recorded of it stays.
[[nodiscard]] ExitCode runRemove(const Context& context, const std::string& path);

/// `brindle forget PATH`: deletes a location that was never checked. One that has a history is refused.
[[nodiscard]] ExitCode runForget(const Context& context, const std::string& path);

}  // namespace brindle
