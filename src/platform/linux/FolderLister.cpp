#include "platform/linux/FolderLister.h"

#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <utility>

namespace brindle {
namespace {

using Kind = TreeEvent::Kind;

constexpr unsigned statusMask = STATX_TYPE | STATX_NLINK | STATX_INO | STATX_SIZE | STATX_BLOCKS |
                                STATX_BTIME | STATX_MTIME | STATX_CTIME;
constexpr int statusFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;

// What most folders need, so that few listings grow.
constexpr std::size_t usualNameBytes = 1024;
constexpr std::size_t usualEntries = 32;

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

/// All but isDataless.
EntryStatus statusFrom(const struct statx& status) {
    return {.size = static_cast<std::int64_t>(status.stx_size),
            .allocatedBytes = static_cast<std::int64_t>(status.stx_blocks) * 512,
            .links = status.stx_nlink,
            .inode = status.stx_ino,
            .attributes = status.stx_attributes,
            .created = creationTime(status)};
}

char markOf(unsigned type) {
    if (type == DT_DIR) return folderMark;
    return type == DT_REG ? fileMark : otherMark;
}

/// Compared with "/" behind the names of folders, the entries of a folder have the order of the whole paths
/// below them.
void sort(FolderListing& listing) {
    const char* names = listing.names.data() + 1;  // behind the marks
    std::ranges::sort(listing.entries,
                      [names](auto a, auto b) { return std::strcmp(names + a, names + b) < 0; });
    // A folder that changes while it is listed may name an entry twice.
    const auto isSame = [names](auto a, auto b) { return std::strcmp(names + a, names + b) == 0; };
    const auto repeated = std::unique(listing.entries.begin(), listing.entries.end(), isSame);
    listing.entries.erase(repeated, listing.entries.end());
}

}  // namespace

StatusAnswer askForStatus(int folder, const char* name) {
    struct statx status {};
    if (::statx(folder, name, statusFlags, statusMask, &status) != 0) return {.error = errno};
    return {.mode = status.stx_mode, .status = statusFrom(status)};
}

FolderLister::FolderLister(std::string root, DatalessTest isDataless, ListingCall readListing,
                           PathSet elsewhere)
    : root_(std::move(root)),
      isDataless_(std::move(isDataless)),
      readListing_(std::move(readListing)),
      elsewhere_(std::move(elsewhere)) {}

bool FolderLister::next(ListedFolder& folder) {
    if (serial_ == 0) {
        lookAt(folder, AT_FDCWD, root_.c_str(), AT_STATX_DONT_SYNC);
        return true;
    }
    while (!trail_.isEmpty()) {
        const char mark = trail_.nextMark();
        if (mark == '\0') {
            trail_.leave();
        } else if (mark == folderMark) {
            trail_.take();
            lookAt(folder, trail_.folder(), trail_.name(), statusFlags);
            return true;
        } else {
            trail_.pass();
        }
    }
    return false;
}

void FolderLister::lookAt(ListedFolder& folder, int parent, const char* name, int flags) {
    folder = {.serial = ++serial_, .level = trail_.level()};
    if (!elsewhere_.empty() && elsewhere_.contains(trail_.path())) {
        folder.kind = Kind::other;
        return;
    }
    struct statx status {};
    if (::statx(parent, name, flags, statusMask, &status) != 0) {
        folder.kind = Kind::noStatus;
        folder.error = errno;
        return;
    }
    if (!S_ISDIR(status.stx_mode)) {
        folder.kind = Kind::noStatus;
        // A folder when it was listed: its place in the order would be wrong.
        folder.error = trail_.isEmpty() ? ENOTDIR : ESTALE;
        return;
    }
    folder.number = numberOf(status);
    if (trail_.contains(folder.number)) {
        folder.kind = Kind::other;
        return;
    }
    folder.status = statusFrom(status);
    folder.status.isDataless = isDataless_(
        {.kind = folder.kind, .level = folder.level, .path = trail_.path(), .status = folder.status});
    // A root that was not entered would read as an empty one.
    folder.mayEnter =
        trail_.isEmpty() || (folder.number.device == trail_.root().device && !folder.status.isDataless);
}

void FolderLister::enter(ListedFolder& folder) {
    FileDescriptor opened = open();
    if (!opened) {
        folder.error = errno;
        return;
    }
    if (brindle::numberOf(opened) != folder.number) {
        folder.error = ESTALE;
        return;
    }
    auto listing = std::make_shared<FolderListing>();
    folder.error = list(opened.get(), *listing);
    if (folder.error != 0) return;
    sort(*listing);
    folder.folder = std::make_shared<FileDescriptor>(std::move(opened));
    folder.listing = std::move(listing);
    trail_.enter(folder);
}

/// Opens the folder that came last. None, with errno set, when that fails.
FileDescriptor FolderLister::open() const {
    const bool isRoot = trail_.isEmpty();
    const int parent = isRoot ? AT_FDCWD : trail_.folder();
    const char* name = isRoot ? root_.c_str() : trail_.name();
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isRoot ? 0 : O_NOFOLLOW);
    const int folder = ::openat(parent, name, flags | O_NOATIME);
    // Only the owner of a folder may leave its access time alone.
    if (folder < 0 && errno == EPERM) return FileDescriptor(::openat(parent, name, flags));
    return FileDescriptor(folder);
}

/// Keeps what the folder holds. Returns errno when the listing breaks off.
int FolderLister::list(int folder, FolderListing& listing) {
    listing.names.reserve(usualNameBytes);
    listing.entries.reserve(usualEntries);
    for (;;) {
        const ssize_t size = readListing_(folder, part_.data(), part_.size());
        if (size <= 0) return size == 0 ? 0 : errno;
        for (const char* next = part_.data(); next < part_.data() + size;) {
            const void* record = next;
            const auto* entry = static_cast<const dirent64*>(record);
            // Taken from the record, not the field: a name may be longer than the field is declared.
            keep(folder, entry->d_type, next + offsetof(dirent64, d_name), listing);
            next += entry->d_reclen;
        }
    }
}

void FolderLister::keep(int folder, unsigned char type, const char* name, FolderListing& listing) const {
    if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) return;
    const char mark = type == DT_UNKNOWN ? markOfUnknown(folder, name) : markOf(type);
    listing.entries.push_back(listing.names.size());
    listing.names += mark;
    listing.names += name;
    if (mark == folderMark) listing.names += '/';
    listing.names += '\0';
}

/// Of an entry of the current folder, of which the listing does not tell what it is.
char FolderLister::markOfUnknown(int folder, const char* name) const {
    if (!elsewhere_.empty() && elsewhere_.contains(trail_.isEmpty() ? name : joinedPath(trail_.path(), name)))
        return folderMark;
    struct statx status {};
    const bool isKnown = ::statx(folder, name, statusFlags, STATX_TYPE, &status) == 0;
    // An entry without status passes for a file here. Its visit tells what is wrong with it.
    return isKnown ? markOf(IFTODT(status.stx_mode)) : fileMark;
}

}  // namespace brindle
