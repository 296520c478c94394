#pragma once

#include "platform/FileDescriptor.h"

#include <optional>
#include <string>

namespace brindle {

/// Keeps other processes out while it lives. The system takes the lock back when its holder dies, however
/// that comes about: there is no stale lock.
class FileLock {
public:
    /// Takes the lock that belongs to the private file at `path`, which is made if need be and then holds the
    /// number of this process. Nothing while somebody else has it. Throws std::system_error with the path.
    [[nodiscard]] static std::optional<FileLock> tryToTake(const std::string& path);

    /// Whether somebody has the lock; asking keeps nobody from it. Throws std::system_error with the path.
    [[nodiscard]] static bool isTaken(const std::string& path);

    /// The number of the process that took the lock last; nothing when the file does not tell.
    [[nodiscard]] static std::optional<int> lastHolder(const std::string& path);

private:
    explicit FileLock(FileDescriptor file) : file_(std::move(file)) {}

    FileDescriptor file_;  // the lock belongs to it, and goes when it is closed
};

}  // namespace brindle
