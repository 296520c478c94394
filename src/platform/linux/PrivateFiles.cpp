#include "platform/PrivateFiles.h"

#include "platform/FileDescriptor.h"
#include "platform/Paths.h"
#include "platform/linux/SystemError.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

constexpr mode_t privateFolderMode = 0700;
constexpr mode_t privateFileMode = 0600;

void syncOpened(const std::string& path, int flags) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags));
    if (!file || ::fsync(file.get()) != 0) throwSystemError(errno, path);
}

void syncFolderOf(const std::string& path) {
    syncOpened(std::string(parentPath(standardizedPath(path))), O_DIRECTORY);
}

bool isFolder(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) return S_ISDIR(status.st_mode);
    if (errno != ENOENT) throwSystemError(errno, path);
    return false;
}

void createMissingFolders(const std::string& path) {
    if (isFolder(path)) return;
    createMissingFolders(std::string(parentPath(path)));
    if (::mkdir(path.c_str(), privateFolderMode) == 0) {
        // The umask may have taken from the owner's rights too.
        if (::chmod(path.c_str(), privateFolderMode) != 0) throwSystemError(errno, path);
    } else if (errno != EEXIST) {
        throwSystemError(errno, path);
    } else if (!isFolder(path)) {  // unless another process has just made it
        throwSystemError(ENOTDIR, path);
    }
}

}  // namespace

void createPrivateDirectory(const std::string& path) {
    createMissingFolders(standardizedPath(path));
}

void createPrivateFile(const std::string& path) {
    const FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFileMode));
    if (file) {
        if (::fchmod(file.get(), privateFileMode) != 0) throwSystemError(errno, path);
        return;
    }
    if (errno != EEXIST) throwSystemError(errno, path);

    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) throwSystemError(errno, path);
    if (S_ISLNK(status.st_mode)) throwSystemError(ELOOP, path);
    if (!S_ISREG(status.st_mode)) throwSystemError(EEXIST, path);
}

void refuseLink(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) throwSystemError(ELOOP, path);
}

// Asked without opening the file: closing it again would take away the locks that this process holds on it
// elsewhere (fcntl(2), record locks).
void requireWritableFile(const std::string& path) {
    if (::faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) != 0) throwSystemError(errno, path);
}

void syncToDisk(const std::string& path) {
    syncOpened(path, 0);
    syncFolderOf(path);
}

void replaceFile(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) throwSystemError(errno, from + " to " + to);
    syncFolderOf(to);
}

void placeFile(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) != 0) {
        if (errno != EINVAL) throwSystemError(errno, from + " to " + to);
        // A file system that cannot look and rename in one step.
        struct stat status {};
        if (::lstat(to.c_str(), &status) == 0) throwSystemError(EEXIST, from + " to " + to);
        return replaceFile(from, to);
    }
    syncFolderOf(to);
}

}  // namespace brindle
