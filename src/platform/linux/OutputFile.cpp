#include "platform/OutputFile.h"

#include "model/RandomUUID.h"
#include "platform/FileDescriptor.h"
#include "platform/Paths.h"
#include "platform/linux/SystemError.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

constexpr int symbolicLinkLimit = 40;  // as the kernel's own
constexpr std::string_view partialSuffix = ".partial";
constexpr std::size_t uuidLength = 36;
constexpr int attemptLimit = 16;
constexpr std::int64_t writtenBackAtOnce = 8 << 20;

void writeAll(int file, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        const auto written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throwSystemError(errno, path);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// A pipe, a device, or whatever standard output is.
class Stream final : public OutputFile {
public:
    Stream(int file, std::string path) : file_(file), path_(std::move(path)) {}

    void write(std::string_view bytes) override { writeAll(file_.get(), bytes, path_); }
    void finish() override {}
    void discard() noexcept override {}

private:
    FileDescriptor file_;
    std::string path_;
};

/// Where the symbolic links lead that `path` ends in, if it does; also when nothing is there.
std::string withoutLinksAtItsEnd(std::string path) {
    for (int links = 0;; ++links) {
        std::error_code none;
        const auto target = std::filesystem::read_symlink(path, none).native();
        if (none) return path;
        if (links == symbolicLinkLimit) throwSystemError(ELOOP, path);
        path = target.starts_with('/') ? target : joinedPath(parentPath(path), target);
    }
}

/// As much of the text as fits, cut between two characters where it is UTF-8.
std::string_view cut(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) return text;
    const auto isInsideCharacter = [&] { return (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80; };
    while (limit > 0 && isInsideCharacter()) --limit;
    return text.substr(0, limit);
}

enum class Lock { taken, heldByAnother, unsupported };

/// Locks the whole file; the lock goes when the file is closed, however that comes about.
Lock tryToLock(const FileDescriptor& file) {
    const struct flock whole {
        .l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = 0, .l_len = 0, .l_pid = 0
    };
    if (::fcntl(file.get(), F_OFD_SETLK, &whole) == 0) return Lock::taken;
    return errno == EAGAIN || errno == EACCES ? Lock::heldByAnother : Lock::unsupported;
}

class Replacement final : public OutputFile {
public:
    explicit Replacement(std::string target, const std::optional<struct stat>& replaced)
        : target_(std::move(target)), folderPath_(parentPath(target_)) {
        // Held open: the hidden file is found again wherever the folder is moved meanwhile.
        folder_ = FileDescriptor(::open(folderPath_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder_) throwSystemError(errno, folderPath_);
        const long limit = ::pathconf(folderPath_.c_str(), _PC_NAME_MAX);
        const std::size_t others = 2 + uuidLength + partialSuffix.size();
        const std::size_t longest = limit > 0 ? static_cast<std::size_t>(limit) : 255;
        prefix_ = "." + std::string(cut(lastComponent(target_), longest - others)) + ".";
        removeLeftovers();
        for (int attempt = 0; !create(replaced); ++attempt)
            if (attempt == attemptLimit) throwSystemError(EBUSY, folderPath_);
    }
    ~Replacement() override { discard(); }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void write(std::string_view bytes) override {
        writeAll(file_.get(), bytes, path());
        written_ += static_cast<std::int64_t>(bytes.size());
        if (written_ - onTheWay_ >= writtenBackAtOnce) writeBack();
    }

    void finish() override {
        if (::fsync(file_.get()) != 0) throwSystemError(errno, path());
        // The destination by its whole path: a folder that was moved away must not take the file with it.
        if (::renameat(folder_.get(), name_.c_str(), AT_FDCWD, target_.c_str()) != 0)
            throwSystemError(errno, target_);
        name_.clear();
        file_ = FileDescriptor();
        // The new file is in its place; not every file system can be told to write that down at once.
        const FileDescriptor listing(::openat(folder_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (listing) ::fsync(listing.get());
    }

    void discard() noexcept override {
        if (name_.empty()) return;
        ::unlinkat(folder_.get(), name_.c_str(), 0);
        name_.clear();
        file_ = FileDescriptor();
    }

private:
    [[nodiscard]] std::string path() const { return joinedPath(folderPath_, name_); }

    /// Sends what was written since the last time on its way to the disk, and waits for what was sent then:
    /// else all of a large file would wait in memory for the sync at its end, which on a slow stick takes
    /// minutes that nobody can cut short.
    void writeBack() {
        const auto sync = [this](std::int64_t from, std::int64_t to, unsigned how) {
            if (::sync_file_range(file_.get(), from, to - from, how) == 0) return;
            const bool isUnknownHere = errno == ENOSYS || errno == EINVAL || errno == ESPIPE;
            if (!isUnknownHere) throwSystemError(errno, path());
        };
        constexpr unsigned andWait =
            SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
        sync(onTheWay_, written_, SYNC_FILE_RANGE_WRITE);
        if (onTheWay_ > arrived_) sync(arrived_, onTheWay_, andWait);
        arrived_ = onTheWay_;
        onTheWay_ = written_;
    }

    /// False when another program took the new file for one that was left behind, before it was locked.
    bool create(const std::optional<struct stat>& replaced) {
        name_ = prefix_ + randomUUID() + std::string(partialSuffix);
        constexpr mode_t ordinaryMode = 0666;
        constexpr mode_t ownerAlone = 0600;
        file_ = FileDescriptor(::openat(folder_.get(), name_.c_str(),
                                        O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                        replaced ? ownerAlone : ordinaryMode));
        if (!file_) {
            const int error = errno;
            const std::string failed = path();
            name_.clear();
            throwSystemError(error, failed);
        }
        const bool isHeld = tryToLock(file_) == Lock::heldByAnother;
        struct stat status {};
        if (isHeld || ::fstatat(folder_.get(), name_.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return false;
        if (replaced) takeOver(*replaced, status);
        return true;
    }

    /// As far as the system allows: what it refuses leaves fewer people able to read the file, never more.
    void takeOver(const struct stat& replaced, const struct stat& made) const {
        mode_t mode = replaced.st_mode & 0777;
        const bool isOwnersOwn = replaced.st_uid == made.st_uid && replaced.st_gid == made.st_gid;
        if (!isOwnersOwn && ::fchown(file_.get(), replaced.st_uid, replaced.st_gid) != 0 &&
            ::fchown(file_.get(), static_cast<uid_t>(-1), replaced.st_gid) != 0)
            mode = (mode & ~mode_t{070}) | (mode & (mode << 3) & mode_t{070});
        static_cast<void>(!::fchmod(file_.get(), mode));
    }

    void removeLeftovers() const {
        const int listed = ::openat(folder_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (listed < 0) return;
        const std::unique_ptr<DIR, int (*)(DIR*)> listing(::fdopendir(listed), ::closedir);
        if (!listing) {
            ::close(listed);
            return;
        }
        while (const dirent* entry = ::readdir(listing.get()))
            if (isPartial(entry->d_name)) removeUnlessHeld(entry->d_name);
    }

    [[nodiscard]] bool isPartial(std::string_view name) const {
        return name.size() == prefix_.size() + uuidLength + partialSuffix.size() &&
               name.starts_with(prefix_) && name.ends_with(partialSuffix) &&
               isUUID(name.substr(prefix_.size(), uuidLength));
    }

    void removeUnlessHeld(const char* name) const {
        const FileDescriptor file(
            ::openat(folder_.get(), name, O_RDWR | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        struct stat status {};
        if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
        // Unlinked while it is locked here, so that whoever has just made it sees that it is gone.
        if (tryToLock(file) == Lock::taken) ::unlinkat(folder_.get(), name, 0);
    }

    std::string target_;
    std::string folderPath_;
    std::string prefix_;
    FileDescriptor folder_;
    FileDescriptor file_;
    std::string name_;  // in the folder; empty once there is none
    std::int64_t written_ = 0;
    std::int64_t onTheWay_ = 0;  // up to here it was sent to the disk
    std::int64_t arrived_ = 0;   // and up to here it is there
};

}  // namespace

std::unique_ptr<OutputFile> openOutputFile(const std::string& destination) {
    struct stat status {};
    std::optional<struct stat> replaced;
    if (::stat(destination.c_str(), &status) == 0)
        replaced = status;
    else if (errno != ENOENT)
        throwSystemError(errno, destination);
    if (replaced && S_ISDIR(status.st_mode)) throwSystemError(EISDIR, destination);
    if (replaced && !S_ISREG(status.st_mode)) {
        const int file = ::open(destination.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        if (file < 0) throwSystemError(errno, destination);
        return std::make_unique<Stream>(file, destination);
    }
    if (replaced && ::faccessat(AT_FDCWD, destination.c_str(), W_OK, AT_EACCESS) != 0)
        throwSystemError(errno, destination);
    return std::make_unique<Replacement>(withoutLinksAtItsEnd(destination), replaced);
}

std::unique_ptr<OutputFile> openStandardOutput() {
    const int file = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (file < 0) throwSystemError(errno, "/dev/stdout");
    return std::make_unique<Stream>(file, "/dev/stdout");
}

}  // namespace brindle
