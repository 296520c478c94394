#pragma once

#include "platform/Mounts.h"

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>

namespace brindle {

/// What the system knows about the device that a file system lies on. Texts are empty where unknown.
struct BlockDevice {
    std::string fileSystemUUID;
    std::string label;           // of the file system, as the user wrote it
    std::string fileSystemType;  // as found on the device: "ntfs" where the mount only says "fuseblk"
    std::string persistentID;    // of the partition or the hardware; outlives a restart
    bool isInternal = true;      // not removable, and not on USB or an SD card

    bool operator==(const BlockDevice&) const = default;
};

/// Tells what is known about a block device; nothing when the system has no such device.
using DeviceLookup = std::function<std::optional<BlockDevice>(dev_t)>;

/// Asks udev, and the kernel's device tree where udev keeps no database. Reads no device.
[[nodiscard]] std::optional<BlockDevice> lookUpDevice(dev_t number);

/// The device that a mounted file system lies on: its own, or that of its source where the mount gets a
/// number that is no device's (btrfs). Nothing when there is none (tmpfs).
[[nodiscard]] std::optional<BlockDevice> deviceOf(const Mount& mount, const DeviceLookup& lookUp);

/// Undoes the "\x20" escapes of udev's database.
[[nodiscard]] std::string decodedDeviceText(std::string_view text);

}  // namespace brindle
