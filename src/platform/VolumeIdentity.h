#pragma once

#include "platform/BlockDevice.h"
#include "platform/Mounts.h"

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

struct FolderProbe;

/// What a person sees of the file system that a folder lies on.
struct VolumeDescription {
    std::string id;
    std::string name;  // its label, "System" for "/", else the name of the folder it is mounted at
    std::string mountPath;
    bool isInternal = true;
    bool caseSensitive = true;  // of the folder: some file systems leave it to each folder

    bool operator==(const VolumeDescription&) const = default;
};

/// A text that stays the same for a file system wherever and whenever it is mounted, and tells it from every
/// other: its UUID (with the subvolume where it has several), else the persistent id of its device, else the
/// id that the kernel reports, else its source. `folder` is open on the mount; -1 when none could be opened,
/// which leaves out what only a folder can tell. Empty when nothing is known.
[[nodiscard]] std::string volumeIdentity(const Mount& mount, const std::optional<BlockDevice>& device,
                                         int folder);

/// What the volumes of one pool have in common, told from the identity of one of them; nothing for a volume
/// that has its space to itself.
[[nodiscard]] std::optional<std::string> poolIdentity(std::string_view volumeID);

/// Describes the volume of a folder that was found readable.
[[nodiscard]] VolumeDescription describeVolume(const FolderProbe& probe);

}  // namespace brindle
