#include "platform/Snapshots.h"

#include "platform/Paths.h"

#include <algorithm>
#include <btrfsutil.h>
#include <filesystem>
#include <linux/btrfs_tree.h>
#include <memory>
#include <string>
#include <system_error>

namespace brindle {
namespace {

using SubvolumeIterator =
    std::unique_ptr<btrfs_util_subvolume_iterator, decltype(&btrfs_util_destroy_subvolume_iterator)>;

bool isSnapshot(const struct btrfs_util_subvolume_info& subvolume) {
    return std::ranges::any_of(subvolume.parent_uuid, [](std::uint8_t byte) { return byte != 0; });
}

/// Begins at the top of the pool: from a subvolume, users get a list too, which lacks without a word what
/// lies in folders that they may not enter.
std::optional<std::int64_t> countReadOnlySnapshots(int folder) {
    btrfs_util_subvolume_iterator* created = nullptr;
    if (btrfs_util_create_subvolume_iterator_fd(folder, BTRFS_FS_TREE_OBJECTID, 0, &created) != BTRFS_UTIL_OK)
        return {};
    const SubvolumeIterator iterator(created, &btrfs_util_destroy_subvolume_iterator);
    for (std::int64_t count = 0;;) {
        struct btrfs_util_subvolume_info subvolume {};
        const auto result = btrfs_util_subvolume_iterator_next_info(iterator.get(), nullptr, &subvolume);
        if (result == BTRFS_UTIL_ERROR_STOP_ITERATION) return count;
        if (result != BTRFS_UTIL_OK) return {};
        if ((subvolume.flags & BTRFS_ROOT_SUBVOL_RDONLY) != 0 && isSnapshot(subvolume)) ++count;
    }
}

std::optional<std::int64_t> countEntries(const std::string& folder) {
    std::int64_t count = 0;
    std::error_code error;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator next(folder, error); !error && next != end;
         next.increment(error))
        ++count;
    return error ? std::nullopt : std::optional(count);
}

}  // namespace

std::optional<std::int64_t> countSnapshots(const FolderProbe& probe, const MountTable& mounts) {
    const Mount& mount = probe.mount.value();
    if (mount.type == "btrfs") return countReadOnlySnapshots(probe.folder.get());
    if (mount.type != "zfs") return {};
    // The list is found in the topmost folder of the file system only.
    const FolderProbe top = probeFolder(mount.target, mounts);
    if (top.state != FolderState::readable || top.mount->id != mount.id) return {};
    return countEntries(joinedPath(top.path, ".zfs/snapshot"));
}

}  // namespace brindle
