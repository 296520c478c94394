#include "platform/VolumeIdentity.h"

#include "model/Translation.h"
#include "platform/FolderProbe.h"
#include "platform/Paths.h"

#include <algorithm>
#include <array>
#include <bit>
#include <btrfsutil.h>
#include <fmt/format.h>
#include <linux/fs.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/vfs.h>

namespace brindle {
namespace {

std::string subvolumeSuffix(const Mount& mount, int folder) {
    if (mount.type != "btrfs") return "";
    std::uint64_t id = 0;
    if (folder >= 0 && btrfs_util_subvolume_id_fd(folder, &id) == BTRFS_UTIL_OK)
        return fmt::format("/{}", id);
    return fmt::format("/{}", optionValue(mount, "subvolid"));
}

/// The kernel's id of the file system in hexadecimal; empty where it gives none.
std::string reportedIdentity(int folder) {
    struct statfs status {};
    if (folder < 0 || ::fstatfs(folder, &status) != 0) return "";
    const auto id = std::bit_cast<std::array<std::uint32_t, 2>>(status.f_fsid);
    return id[0] == 0 && id[1] == 0 ? "" : fmt::format("{:08x}{:08x}", id[0], id[1]);
}

bool isCaseSensitive(const FolderProbe& probe) {
    const auto& type = probe.device && !probe.device->fileSystemType.empty() ? probe.device->fileSystemType
                                                                             : probe.mount->type;
    constexpr std::array<std::string_view, 6> ignoringCase{"exfat", "fuseblk", "msdos",
                                                           "ntfs",  "ntfs3",   "vfat"};
    if (std::ranges::find(ignoringCase, type) != ignoringCase.end()) return false;
    int flags = 0;
    return ::ioctl(probe.folder.get(), FS_IOC_GETFLAGS, &flags) != 0 || (flags & FS_CASEFOLD_FL) == 0;
}

std::string volumeName(const Mount& mount, const std::optional<BlockDevice>& device) {
    if (device && !device->label.empty()) return device->label;
    return mount.target == "/" ? translated("System") : std::string(lastComponent(mount.target));
}

}  // namespace

std::string volumeIdentity(const Mount& mount, const std::optional<BlockDevice>& device, int folder) {
    if (device && !device->fileSystemUUID.empty())
        return device->fileSystemUUID + subvolumeSuffix(mount, folder);
    if (device && !device->persistentID.empty()) return device->persistentID + subvolumeSuffix(mount, folder);
    // This one tells subvolumes apart by itself.
    if (auto id = reportedIdentity(folder); !id.empty()) return id;
    return mount.source;
}

std::optional<std::string> poolIdentity(std::string_view volumeID) {
    // A path, which may be an identity too, begins with a slash; neither UUIDs nor persistent ids hold any.
    const auto slash = volumeID.find('/');
    if (slash == 0 || slash == std::string_view::npos) return {};
    const std::string_view subvolume = volumeID.substr(slash + 1);
    const bool isNumber =
        !subvolume.empty() && subvolume.find_first_not_of("0123456789") == std::string_view::npos;
    return isNumber ? std::optional(std::string(volumeID.substr(0, slash))) : std::nullopt;
}

VolumeDescription describeVolume(const FolderProbe& probe) {
    return {.id = probe.volumeID,
            .name = volumeName(*probe.mount, probe.device),
            .mountPath = probe.mount->target,
            .isInternal = !probe.device || probe.device->isInternal,
            .caseSensitive = isCaseSensitive(probe)};
}

}  // namespace brindle
