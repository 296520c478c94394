#pragma once

#include <string>
#include <system_error>

namespace brindle {

/// Throws std::system_error of the error number (errno(3)), naming the path.
[[noreturn]] inline void throwSystemError(int error, const std::string& path) {
    throw std::system_error(error, std::generic_category(), path);
}

}  // namespace brindle
