#include "platform/linux/TreeReader.h"

#include "platform/Mounts.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <utility>

namespace brindle {
namespace {

// Beside the root, as many of the innermost folders stay open. Few trees are deeper, and those are read with
// two more calls a folder.
constexpr std::size_t openFolderLimit = 16;

constexpr unsigned statusMask = STATX_TYPE | STATX_NLINK | STATX_INO | STATX_SIZE | STATX_BLOCKS |
                                STATX_BTIME | STATX_MTIME | STATX_CTIME;
constexpr int statusFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;

// Marks in front of the names in a listing.
constexpr char folderMark = 'd';
constexpr char fileMark = 'f';
constexpr char otherMark = 'o';

FileNumber numberOf(const struct statx& status) {
    return {makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino};
}

UnixTime seconds(const statx_timestamp& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

UnixTime creationTime(const struct statx& status) {
    if ((status.stx_mask & STATX_BTIME) != 0) return seconds(status.stx_btime);
    return std::min(seconds(status.stx_mtime), seconds(status.stx_ctime));
}

/// The number of an open folder; 0 and 0, which no folder has, when it cannot be told.
FileNumber numberOf(const FileDescriptor& folder) {
    struct stat status {};
    if (::fstat(folder.get(), &status) != 0) return {};
    return {status.st_dev, status.st_ino};
}

char markOf(unsigned type) {
    if (type == DT_DIR) return folderMark;
    return type == DT_REG ? fileMark : otherMark;
}

/// Where below the root another computer's folders are mounted.
PathSet foldersElsewhere(const std::string& root) {
    const MountTable table = MountTable::current();
    PathSet folders;
    for (const Mount& mount : table.mounts()) {
        if (isLocal(mount) || mount.target == root || !isAtOrBelow(mount.target, root)) continue;
        // A local file system may have been mounted over it.
        if (!isLocal(*table.holding(mount.target)))
            folders.insert(mount.target.substr(root == "/" ? 1 : root.size() + 1));
    }
    return folders;
}

class LinuxTreeSource final : public TreeSource {
public:
    explicit LinuxTreeSource(DatalessTest isDataless) : isDataless_(std::move(isDataless)) {}

    [[nodiscard]] FileNumber identify(const std::string& root) const override {
        struct stat status {};
        if (::stat(root.c_str(), &status) != 0) throw std::system_error(errno, std::generic_category(), root);
        if (!S_ISDIR(status.st_mode)) throw std::system_error(ENOTDIR, std::generic_category(), root);
        return {status.st_dev, status.st_ino};
    }

    // The first part tells whether the folder can be read. Reading it to its end would double the work on a
    // folder of a million files, and the reader tells of a failure further on all the same.
    void list(const std::string& root) const override {
        alignas(dirent64) std::array<char, 8192> part{};
        const FileDescriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folder || ::getdents64(folder.get(), part.data(), part.size()) < 0)
            throw std::system_error(errno, std::generic_category(), root);
    }

    [[nodiscard]] std::unique_ptr<TreeReader> open(const std::string& root) const override {
        return std::make_unique<LinuxTreeReader>(root, isDataless_, ::getdents64, foldersElsewhere(root));
    }

private:
    DatalessTest isDataless_;
};

}  // namespace

bool isDatalessHere(const TreeEvent& entry) {
    return entry.kind == TreeEvent::Kind::directory && (entry.status.attributes & STATX_ATTR_AUTOMOUNT) != 0;
}

std::unique_ptr<TreeSource> makeTreeSource(DatalessTest isDataless) {
    return std::make_unique<LinuxTreeSource>(std::move(isDataless));
}

LinuxTreeReader::LinuxTreeReader(std::string root, DatalessTest isDataless, ListingCall readListing,
                                 PathSet elsewhere)
    : root_(std::move(root)),
      isDataless_(std::move(isDataless)),
      readListing_(std::move(readListing)),
      elsewhere_(std::move(elsewhere)) {}

const TreeEvent* LinuxTreeReader::next() {
    if (!std::exchange(hasBegun_, true)) return visitRoot();
    if (std::exchange(isAtFolder_, false)) {
        if (const TreeEvent* event = enterFolder()) return event;
    }
    while (!levels_.empty()) {
        Level& level = levels_.back();
        if (level.nextEntry == entries_.size()) return leaveFolder();
        if (const TreeEvent* event = visitEntry(level)) return event;
    }
    return nullptr;
}

const TreeEvent* LinuxTreeReader::visitRoot() {
    struct statx status {};
    if (::statx(AT_FDCWD, root_.c_str(), AT_STATX_DONT_SYNC, statusMask, &status) != 0)
        return tell(TreeEvent::Kind::noStatus, errno);
    if (!S_ISDIR(status.stx_mode)) return tell(TreeEvent::Kind::noStatus, ENOTDIR);
    return tellFolder(status, root_.c_str());
}

/// Null when the entry is gone.
const TreeEvent* LinuxTreeReader::visitEntry(Level& level) {
    char* name = &names_[entries_[level.nextEntry++]];
    const char mark = *name++;
    std::size_t length = std::strlen(name);
    if (mark == folderMark) name[--length] = '\0';
    path_.resize(level.prefixLength);
    path_.append(name, length);
    if (mark == otherMark) return tell(TreeEvent::Kind::other);
    if (mark == folderMark && !elsewhere_.empty() && elsewhere_.contains(path_))
        return tell(TreeEvent::Kind::other);

    struct statx status {};
    if (::statx(level.folder.get(), name, statusFlags, statusMask, &status) != 0) {
        if (errno == ENOENT && mark == fileMark) return nullptr;
        return tell(TreeEvent::Kind::noStatus, errno);
    }
    // A folder now, a file when it was listed, or the other way round: its place in the order would be wrong.
    if (S_ISDIR(status.stx_mode) != (mark == folderMark)) return tell(TreeEvent::Kind::noStatus, ESTALE);

    if (mark == folderMark) {
        if (isOnTheWay(numberOf(status))) return tell(TreeEvent::Kind::other);
        return tellFolder(status, name);
    }
    if (!S_ISREG(status.stx_mode)) return tell(TreeEvent::Kind::other);
    return tell(TreeEvent::Kind::file, status);
}

/// Null when the entries of the folder come next.
const TreeEvent* LinuxTreeReader::enterFolder() {
    if (!mayEnter_) return tell(TreeEvent::Kind::directoryEnd);

    Level level{.folder = openFolder(),
                .number = folderNumber_,
                .prefixLength = path_.size(),
                .namesBegin = names_.size(),
                .entriesBegin = entries_.size(),
                .nextEntry = entries_.size()};
    if (!level.folder) return tell(TreeEvent::Kind::unreadableDirectory, errno);
    if (numberOf(level.folder) != level.number) return tell(TreeEvent::Kind::unreadableDirectory, ESTALE);

    if (const int error = list(level.folder.get()); error != 0) {
        names_.resize(level.namesBegin);
        entries_.resize(level.entriesBegin);
        return tell(TreeEvent::Kind::unreadableDirectory, error);
    }
    sort(level);
    if (!levels_.empty()) {
        path_ += '/';
        level.prefixLength = path_.size();
    }
    levels_.push_back(std::move(level));
    if (levels_.size() > openFolderLimit + 1) levels_[levels_.size() - 1 - openFolderLimit].folder = {};
    return nullptr;
}

const TreeEvent* LinuxTreeReader::leaveFolder() {
    const Level left = std::move(levels_.back());
    levels_.pop_back();
    names_.resize(left.namesBegin);
    entries_.resize(left.entriesBegin);
    path_.resize(left.prefixLength == 0 ? 0 : left.prefixLength - 1);
    if (!levels_.empty() && !levels_.back().folder) returnTo(levels_.back(), left);
    if (left.error != 0) return tell(TreeEvent::Kind::unreadableDirectory, left.error);
    return tell(TreeEvent::Kind::directoryEnd);
}

const TreeEvent* LinuxTreeReader::tell(TreeEvent::Kind kind, int error) {
    event_.kind = kind;
    event_.level = static_cast<int>(levels_.size());
    event_.path = path_;
    event_.error = error;
    return &event_;
}

const TreeEvent* LinuxTreeReader::tell(TreeEvent::Kind kind, const struct statx& status) {
    tell(kind);
    event_.status = {.size = static_cast<std::int64_t>(status.stx_size),
                     .allocatedBytes = static_cast<std::int64_t>(status.stx_blocks) * 512,
                     .links = status.stx_nlink,
                     .inode = status.stx_ino,
                     .attributes = status.stx_attributes,
                     .created = creationTime(status)};
    event_.status.isDataless = isDataless_(event_);
    return &event_;
}

const TreeEvent* LinuxTreeReader::tellFolder(const struct statx& status, const char* name) {
    folderName_ = name;
    folderNumber_ = numberOf(status);
    isAtFolder_ = true;
    tell(TreeEvent::Kind::directory, status);
    // A root that was not entered would read as an empty one.
    mayEnter_ = levels_.empty() ||
                (folderNumber_.device == levels_.front().number.device && !event_.status.isDataless);
    return &event_;
}

/// Opens the folder of the last event. None, with errno set, when that fails.
FileDescriptor LinuxTreeReader::openFolder() const {
    const bool isRoot = levels_.empty();
    const int parent = isRoot ? AT_FDCWD : levels_.back().folder.get();
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isRoot ? 0 : O_NOFOLLOW);
    const int folder = ::openat(parent, folderName_, flags | O_NOATIME);
    // Only the owner of a folder may leave its access time alone.
    if (folder < 0 && errno == EPERM) return FileDescriptor(::openat(parent, folderName_, flags));
    return FileDescriptor(folder);
}

/// Keeps what the folder holds. Returns errno when the listing breaks off.
int LinuxTreeReader::list(int folder) {
    for (;;) {
        const ssize_t size = readListing_(folder, listing_.data(), listing_.size());
        if (size <= 0) return size == 0 ? 0 : errno;
        for (const char* next = listing_.data(); next < listing_.data() + size;) {
            const void* record = next;
            const auto* entry = static_cast<const dirent64*>(record);
            // Taken from the record, not the field: a name may be longer than the field is declared.
            keep(folder, entry->d_type, next + offsetof(dirent64, d_name));
            next += entry->d_reclen;
        }
    }
}

/// Appends the entry's mark and name. "/" stands behind the name of a folder, NUL behind all: compared so,
/// the entries of one folder have the order of the whole paths below them.
void LinuxTreeReader::keep(int folder, unsigned char type, const char* name) {
    if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) return;
    const char mark = type == DT_UNKNOWN ? markOfUnknown(folder, name) : markOf(type);
    entries_.push_back(names_.size());
    names_ += mark;
    names_ += name;
    if (mark == folderMark) names_ += '/';
    names_ += '\0';
}

/// Of an entry of the current folder, of which the listing does not tell what it is.
char LinuxTreeReader::markOfUnknown(int folder, const char* name) const {
    if (!elsewhere_.empty() && elsewhere_.contains(levels_.empty() ? name : joinedPath(path_, name)))
        return folderMark;
    struct statx status {};
    const bool isKnown = ::statx(folder, name, statusFlags, STATX_TYPE, &status) == 0;
    // An entry without status passes for a file here. Its visit tells what is wrong with it.
    return isKnown ? markOf(IFTODT(status.stx_mode)) : fileMark;
}

void LinuxTreeReader::sort(const Level& level) {
    const char* names = names_.data() + 1;  // behind the marks
    const auto begin = entries_.begin() + static_cast<std::ptrdiff_t>(level.entriesBegin);
    std::sort(begin, entries_.end(),
              [names](auto a, auto b) { return std::strcmp(names + a, names + b) < 0; });
    // A folder that changes while it is listed may name an entry twice.
    const auto end = std::unique(begin, entries_.end(),
                                 [names](auto a, auto b) { return std::strcmp(names + a, names + b) == 0; });
    entries_.erase(end, entries_.end());
}

/// Opens a folder again, from the one below it. Where that fails its remaining entries are given up.
void LinuxTreeReader::returnTo(Level& parent, const Level& child) {
    FileDescriptor folder(::openat(child.folder.get(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder && numberOf(folder) == parent.number) {
        parent.folder = std::move(folder);
    } else if (parent.nextEntry < entries_.size()) {
        parent.error = folder ? ESTALE : errno;
        parent.nextEntry = entries_.size();
    }
}

/// Whether the folder is one of those that it lies in, which only a mount can bring about.
bool LinuxTreeReader::isOnTheWay(FileNumber number) const {
    return std::any_of(levels_.begin(), levels_.end(),
                       [number](const Level& level) { return level.number == number; });
}

}  // namespace brindle
