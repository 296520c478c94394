#pragma once

#include "platform/FileDescriptor.h"

#include <cstdint>
#include <optional>
#include <string>

namespace brindle {

/// A part of a file, which may lie beyond its end.
struct ByteRange {
    std::int64_t begin = 0;
    std::int64_t size = 0;
};

/// A process that has a lock of any kind on a part of the range, by a lock of its own that this process does
/// not share; 0 when the system does not tell its number, nothing when there is none or no file. Keeps nobody
/// from it. Throws std::system_error with the path.
///
/// Closing the file gives back the locks that this process has on it elsewhere (fcntl(2), record locks): to
/// be asked while it has none.
[[nodiscard]] std::optional<int> byteLockHolder(const std::string& path, const ByteRange& range);

/// Keeps every other program, and all other locks of this one, from a part of a file while it lives. The
/// system takes the lock back when its holder dies.
class ByteLock {
public:
    /// Nothing while somebody else has a lock there. Throws std::system_error with the path.
    [[nodiscard]] static std::optional<ByteLock> tryToTake(const std::string& path, const ByteRange& range);

private:
    explicit ByteLock(FileDescriptor file) : file_(std::move(file)) {}

    FileDescriptor file_;  // the lock belongs to it, and goes when it is closed
};

}  // namespace brindle
