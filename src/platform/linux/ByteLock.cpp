#include "platform/ByteLock.h"

#include "platform/linux/SystemError.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

struct flock writeLock(const ByteRange& range) {
    return {.l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = range.begin, .l_len = range.size, .l_pid = 0};
}

}  // namespace

std::optional<int> byteLockHolder(const std::string& path, const ByteRange& range) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file && errno == ENOENT) return {};
    struct flock lock = writeLock(range);
    if (!file || ::fcntl(file.get(), F_OFD_GETLK, &lock) != 0) throwSystemError(errno, path);
    if (lock.l_type == F_UNLCK) return {};
    return lock.l_pid > 0 ? lock.l_pid : 0;
}

std::optional<ByteLock> ByteLock::tryToTake(const std::string& path, const ByteRange& range) {
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file) throwSystemError(errno, path);
    const struct flock lock = writeLock(range);
    if (::fcntl(file.get(), F_OFD_SETLK, &lock) == 0) return ByteLock(std::move(file));
    if (errno == EAGAIN || errno == EACCES) return {};
    throwSystemError(errno, path);
}

}  // namespace brindle
