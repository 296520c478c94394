#pragma once

#include "platform/FileLock.h"

#include <optional>
#include <string>

namespace brindle {

/// The lock that a window holds for as long as it runs, in the data directory, which is there. A window reads
/// the settings once: while there is one, nobody else changes them. Nothing while another window has it.
/// Throws std::system_error.
[[nodiscard]] std::optional<FileLock> tryToTakeWindowLock(const std::string& dataDirectory);

/// Whether a window runs; asking keeps none from it. Throws std::system_error.
[[nodiscard]] bool isWindowRunning(const std::string& dataDirectory);

}  // namespace brindle
