#pragma once

#include "platform/FileLock.h"

#include <optional>
#include <string>

namespace brindle {

/// The lock that a window holds for as long as it runs, in the data directory, which is there. A window reads
/// the settings once and is then the only one to change them; a program without a window holds the lock
/// meanwhile, for a moment. Nothing while somebody else has it. Throws std::system_error.
[[nodiscard]] std::optional<FileLock> tryToTakeWindowLock(const std::string& dataDirectory);

}  // namespace brindle
