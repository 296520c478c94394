#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Small files that are read and written as a whole. Every failure is a std::system_error whose message holds
// the path.

namespace brindle {

/// What is in the regular file at `path`, also by way of a symbolic link; nothing when none is there. A file
/// of more than `limit` bytes fails with EFBIG, anything but a regular file with EINVAL.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::string& path, std::size_t limit);

/// Gives the file at `path` these contents and mode 0600, and returns once they are on the disk: after a
/// crash it is the old file or the new one, and after a failure the old one. A symbolic link is refused with
/// ELOOP. What is made on the way is "<path>.new", so that callers write one at a time.
void writeWholeFile(const std::string& path, std::string_view contents);

}  // namespace brindle
