#pragma once

#include "platform/Mounts.h"

#include <span>
#include <string>

namespace brindle {

/// Where a statement goes unless the user says otherwise: beside the latest of the `exports` (paths, latest
/// first) that is still there, else in `documents`. What lies on another computer is not looked at, so that a
/// server that does not answer holds nobody up.
[[nodiscard]] std::string statementsFolder(std::span<const std::string> exports, const std::string& documents,
                                           const MountTable& mounts);

}  // namespace brindle
