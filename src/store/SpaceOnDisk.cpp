#include "store/SpaceOnDisk.h"

#include "model/CheckedSum.h"
#include "platform/Bookmark.h"
#include "platform/Paths.h"
#include "platform/VolumeIdentity.h"

#include <algorithm>

namespace brindle {
namespace {

/// Where the location lies on its volume, wherever that is mounted; its path where that cannot be told.
std::string pathOnVolume(const LocationRecord& location) {
    if (location.kind == LocationKind::volume) return "/";
    const auto bookmark = location.bookmark ? decodeBookmark(*location.bookmark) : std::nullopt;
    if (!bookmark || !isAtOrBelow(location.scanPath, bookmark->mountPath)) return location.scanPath;
    std::string_view below = std::string_view(location.scanPath).substr(bookmark->mountPath.size());
    if (below.starts_with('/')) below.remove_prefix(1);
    return below.empty() ? bookmark->mountedRoot : joinedPath(bookmark->mountedRoot, below);
}

}  // namespace

SpaceOnDisk::SpaceOnDisk(std::span<const LocationRecord> locations,
                         const std::unordered_map<LocationID, LocationSpace>& found) {
    for (const LocationRecord& location : locations) {
        const auto space = found.find(location.id);
        if (location.removedAt || space == found.end()) continue;
        const std::string path = pathOnVolume(location);
        const bool isKnown = std::ranges::any_of(folders_, [&](const Folder& known) {
            return known.volumeID == location.volumeID && known.path == path;
        });
        if (!isKnown)
            folders_.push_back({location.volumeID, poolIdentity(location.volumeID), path, space->second});
    }
    for (Folder& folder : folders_)
        folder.isNested = std::ranges::any_of(folders_, [&folder](const Folder& other) {
            return &other != &folder && other.volumeID == folder.volumeID &&
                   isAtOrBelow(folder.path, other.path);
        });
}

FoundSpace SpaceOnDisk::on(std::string_view volumeID) const {
    FoundSpace found;
    const auto pool = poolIdentity(volumeID);
    if (pool) found.otherVolumesBytes = 0;
    for (const Folder& folder : folders_) {
        const std::int64_t allocated = folder.isNested ? 0 : folder.space.allocatedBytes;
        if (folder.volumeID == volumeID) {
            found.allocatedBytes = checkedSum(found.allocatedBytes, allocated);
            found.trashBytes = checkedSum(found.trashBytes, folder.space.trashBytes);
        } else if (pool && folder.pool == pool) {
            found.otherVolumesBytes = checkedSum(*found.otherVolumesBytes, allocated);
        }
    }
    return found;
}

}  // namespace brindle
