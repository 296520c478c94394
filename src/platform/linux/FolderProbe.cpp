#include "platform/FolderProbe.h"

#include "platform/Paths.h"
#include "platform/VolumeIdentity.h"

#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle {
namespace {

constexpr int symbolicLinkLimit = 40;  // as the kernel's own

/// A place on the way along a path, opened without reading it.
struct Place {
    std::string path;  // without symbolic links
    const Mount* mount = nullptr;
    FileDescriptor descriptor;
    struct statx status {};
};

FolderState stateAfter(int error) {
    return error == EACCES || error == EPERM ? FolderState::refused : FolderState::missing;
}

/// Opens `name`, of which `place.path` is the whole path. `readable` says only that something is there.
FolderState enter(Place& place, int parent, const std::string& name, const MountTable& mounts) {
    place.mount = mounts.holding(place.path);
    if (place.mount == nullptr) return FolderState::missing;
    if (!isLocal(*place.mount)) return FolderState::notLocal;

    // Opened as a place only, a folder that would mount something does not.
    place.descriptor = FileDescriptor(::openat(parent, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (!place.descriptor ||
        ::statx(place.descriptor.get(), "", AT_EMPTY_PATH | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC,
                STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID, &place.status) != 0)
        return stateAfter(errno);

    const bool isElsewhere = (place.status.stx_mask & STATX_MNT_ID) != 0 &&
                             place.status.stx_mnt_id != static_cast<std::uint64_t>(place.mount->id);
    const bool wouldMount = (place.status.stx_attributes & STATX_ATTR_AUTOMOUNT) != 0;
    return isElsewhere || wouldMount ? FolderState::missing : FolderState::readable;
}

FolderState enterRoot(Place& place, const MountTable& mounts) {
    place = {.path = "/"};
    return enter(place, AT_FDCWD, "/", mounts);
}

std::string linkTarget(int link) {
    std::array<char, PATH_MAX> buffer{};
    const auto length = ::readlinkat(link, "", buffer.data(), buffer.size());
    return length > 0 ? std::string(buffer.data(), static_cast<std::size_t>(length)) : "";
}

/// Goes one component at a time, so that the mount table is asked before anything is touched. Takes from
/// `remaining` what was followed; `reached` is how far that led.
FolderState descend(std::string& remaining, Place& reached, const MountTable& mounts) {
    int linksLeft = symbolicLinkLimit;
    auto state = enterRoot(reached, mounts);
    while (state == FolderState::readable && !remaining.empty()) {
        const auto component = remaining.substr(0, remaining.find('/'));
        Place next{.path = standardizedPath(component, reached.path)};
        if (next.path != reached.path) state = enter(next, reached.descriptor.get(), component, mounts);
        if (state != FolderState::readable) return state;
        remaining.erase(0, component.size() + 1);
        if (next.path == reached.path) continue;

        if (!S_ISLNK(next.status.stx_mode)) {
            reached = std::move(next);
        } else if (const auto target = linkTarget(next.descriptor.get());
                   target.empty() || linksLeft-- == 0) {
            return FolderState::missing;
        } else {
            remaining.insert(0, "/").insert(0, target);
            if (target.starts_with('/')) state = enterRoot(reached, mounts);
        }
    }
    return state;
}

/// Opens the folder that was reached for reading. Some file systems refuse only the reading itself.
FolderState openForReading(const Place& reached, FileDescriptor& folder) {
    folder = FileDescriptor(::openat(reached.descriptor.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    alignas(dirent64) std::array<char, 8192> entries{};
    if (!folder || ::getdents64(folder.get(), entries.data(), entries.size()) < 0 ||
        ::lseek(folder.get(), 0, SEEK_SET) < 0)
        return stateAfter(errno);
    return FolderState::readable;
}

FolderIdentity identityFrom(const struct statx& status) {
    FolderIdentity identity{.inode = status.stx_ino};
    if ((status.stx_mask & STATX_BTIME) != 0)
        identity.birth = BirthTime{status.stx_btime.tv_sec, status.stx_btime.tv_nsec};
    return identity;
}

}  // namespace

FolderProbe probeFolder(const std::string& path, const MountTable& mounts, const DeviceLookup& lookUp) {
    if (path.find('\0') != path.npos) return {};

    std::string remaining = path;
    Place reached;
    FolderProbe probe;
    probe.state = descend(remaining, reached, mounts);
    const Mount* mount = reached.mount;
    if (probe.state == FolderState::readable) {
        if (isPseudo(*mount))
            probe.state = FolderState::pseudo;
        else if (!S_ISDIR(reached.status.stx_mode))
            probe.state = FolderState::notAFolder;
        else
            probe.state = openForReading(reached, probe.folder);
        probe.identity = identityFrom(reached.status);
    } else if (probe.state == FolderState::refused) {
        mount = mounts.holding(standardizedPath(remaining, reached.path));
    }
    if (probe.state != FolderState::readable && probe.state != FolderState::refused) return probe;

    const int openedOnMount = probe.folder             ? probe.folder.get()
                              : mount == reached.mount ? reached.descriptor.get()
                                                       : -1;
    probe.mount = *mount;
    probe.device = deviceOf(*mount, lookUp);
    probe.volumeID = volumeIdentity(*mount, probe.device, openedOnMount);
    if (probe.state == FolderState::readable) probe.path = std::move(reached.path);
    return probe;
}

std::optional<std::string> realPath(const std::string& path, const MountTable& mounts) {
    std::string remaining = path;
    Place reached;
    if (descend(remaining, reached, mounts) != FolderState::readable) return {};
    return std::move(reached.path);
}

}  // namespace brindle
