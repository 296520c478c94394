#include "platform/FileLock.h"

#include "platform/PrivateFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

/// A lock of the whole file that belongs to whoever opened it, as one of flock() does. Unlike that, it can be
/// asked for without being taken.
struct flock wholeFile() {
    return {.l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = 0, .l_len = 0, .l_pid = 0};
}

}  // namespace

std::optional<FileLock> FileLock::tryToTake(const std::string& path) {
    createPrivateFile(path);
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    if (!file) throw std::system_error(errno, std::generic_category(), path);
    const struct flock lock = wholeFile();
    if (::fcntl(file.get(), F_OFD_SETLK, &lock) != 0) {
        if (errno == EAGAIN || errno == EACCES) return {};
        throw std::system_error(errno, std::generic_category(), path);
    }
    // Only for people to read: a disk too full for it must not keep anybody from the lock.
    const std::string holder = std::to_string(::getpid()) + "\n";
    if (::ftruncate(file.get(), 0) == 0)
        static_cast<void>(!::write(file.get(), holder.data(), holder.size()));
    return FileLock(std::move(file));
}

bool FileLock::isTaken(const std::string& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file && errno == ENOENT) return false;
    struct flock lock = wholeFile();
    if (!file || ::fcntl(file.get(), F_OFD_GETLK, &lock) != 0)
        throw std::system_error(errno, std::generic_category(), path);
    return lock.l_type != F_UNLCK;
}

std::optional<int> FileLock::lastHolder(const std::string& path) {
    int holder = 0;
    if (std::ifstream(path) >> holder) return holder;
    return {};
}

}  // namespace brindle
