#include "platform/FileLock.h"

#include "platform/PrivateFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>

namespace brindle {

std::optional<FileLock> FileLock::tryToTake(const std::string& path) {
    createPrivateFile(path);
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    if (!file) throw std::system_error(errno, std::generic_category(), path);
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) return {};
        throw std::system_error(errno, std::generic_category(), path);
    }
    // Only for people to read: a disk too full for it must not keep anybody from the lock.
    const std::string holder = std::to_string(::getpid()) + "\n";
    if (::ftruncate(file.get(), 0) == 0)
        static_cast<void>(!::write(file.get(), holder.data(), holder.size()));
    return FileLock(std::move(file));
}

std::optional<int> FileLock::lastHolder(const std::string& path) {
    int holder = 0;
    if (std::ifstream(path) >> holder) return holder;
    return {};
}

}  // namespace brindle
