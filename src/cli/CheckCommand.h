#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>
#include <vector>

namespace brindle {

struct CheckOptions {
    std::vector<std::string> folders;
    bool wait = false;  // for another program that checks, instead of giving up
};

/// `brindle check [--wait] [FOLDER…]`: includes the folders that are not included yet and checks them, or
/// checks every location when none is named. A folder that was included here and could not be checked is
/// forgotten again.
[[nodiscard]] ExitCode runCheck(const Context& context, const CheckOptions& options);

}  // namespace brindle
