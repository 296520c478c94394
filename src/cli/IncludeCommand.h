#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>
#include <vector>

namespace brindle {

/// `brindle include PATH…`: includes folders, or whole drives where one is mounted. How a new location meets
/// those already included is explained before it is stored; none is stored when one of them cannot be.
[[nodiscard]] ExitCode runInclude(const Context& context, const std::vector<std::string>& paths);

}  // namespace brindle
