#include "platform/Bookmark.h"

#include "platform/Paths.h"

#include <dirent.h>
#include <memory>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace brindle {
namespace {

bool isOnVolume(const FolderProbe& probe, const std::string& volumeID) {
    return !volumeID.empty() && probe.volumeID == volumeID;
}

struct CloseListing {
    void operator()(DIR* listing) const { ::closedir(listing); }
};

/// The names in a folder under which it states `inode`; nothing is touched but the folder itself.
std::vector<std::string> namesOf(std::uint64_t inode, FileDescriptor folder) {
    const std::unique_ptr<DIR, CloseListing> listing(::fdopendir(folder.get()));
    std::vector<std::string> names;
    if (!listing) return names;
    [[maybe_unused]] const int ownedByListing = folder.release();
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string_view name = entry->d_name;
        const bool mayBeFolder = entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN;
        if (entry->d_ino == inode && mayBeFolder && name != "." && name != "..") names.emplace_back(name);
    }
    return names;
}

BookmarkResolution findBeside(const Bookmark& bookmark, const MountTable& mounts,
                              const DeviceLookup& lookUp) {
    // Without a birth time the folder cannot be told from a newer one that was given its inode.
    if (!bookmark.folder.birth) return FolderGone{};
    const std::string parent(parentPath(bookmark.path));
    auto besides = probeFolder(parent, mounts, lookUp);
    if (besides.state != FolderState::readable || !isOnVolume(besides, bookmark.volumeID))
        return FolderGone{};
    for (const auto& name : namesOf(bookmark.folder.inode, std::move(besides.folder))) {
        auto path = joinedPath(parent, name);
        auto probe = probeFolder(path, mounts, lookUp);
        if (!isOnVolume(probe, bookmark.volumeID) || probe.identity != bookmark.folder) continue;
        if (probe.state == FolderState::refused) return FolderRefused{};
        return FolderFound{std::move(path), std::move(probe), true};
    }
    return FolderGone{};
}

}  // namespace

Bookmark makeBookmark(std::string path, const FolderProbe& probe) {
    return {.path = std::move(path),
            .volumeID = probe.volumeID,
            .mountPath = probe.mount.value().target,
            .mountedRoot = probe.mount.value().root,
            .folder = probe.identity.value()};
}

BookmarkResolution resolve(const Bookmark& bookmark, const MountTable& mounts, const DeviceLookup& lookUp) {
    auto probe = probeFolder(bookmark.path, mounts, lookUp);
    if (probe.state == FolderState::missing || probe.state == FolderState::notAFolder)
        return findBeside(bookmark, mounts, lookUp);
    if (!isOnVolume(probe, bookmark.volumeID)) return FolderGone{};
    if (probe.state == FolderState::refused) return FolderRefused{};

    const bool isSameFolder = probe.identity == bookmark.folder;
    // The place of a folder of the same drive that was mounted there and is not now.
    const bool isOtherMount =
        probe.mount->target != bookmark.mountPath || probe.mount->root != bookmark.mountedRoot;
    if (!isSameFolder && isOtherMount) return FolderGone{};
    return FolderFound{bookmark.path, std::move(probe), !isSameFolder};
}

}  // namespace brindle
