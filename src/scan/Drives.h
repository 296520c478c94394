#pragma once

#include "model/LocalDay.h"
#include "model/Location.h"
#include "platform/FolderProbe.h"
#include "platform/Mounts.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// A mounted drive, or a volume of one, and what is known of the location that covers the whole of it.
struct DriveInfo {
    std::string id;  // unique in a list of drives
    std::string name;
    std::string mountPath;
    std::string scanPath;  // what a whole-drive location walks
    bool isInternal = true;
    bool isStartup = false;
    bool caseSensitive = true;
    std::string volumeID;

    // Of the location, if there is one.
    std::optional<LocationStatus> status;
    std::int64_t trackedBytes = 0;
    std::optional<UnixTime> lastCheck;
    std::optional<LocalDay> trackingStart;
    std::optional<LocalDay> trackingEnd;

    bool operator==(const DriveInfo&) const = default;
};

/// The mounted drives of this computer, each once: the startup drive first, the others by their mount paths.
[[nodiscard]] std::vector<DriveInfo> mountedDrives(std::span<const TrackedLocation> tracked,
                                                   const MountTable& mounts = MountTable::current(),
                                                   const DeviceLookup& lookUp = lookUpDevice);

/// Where the drive of this identity is mounted; at `likelyPath` where several mounts show it.
struct MountedDrive {
    std::string mountPath;
    FolderState state = FolderState::missing;  // of its topmost folder: readable or refused
};
[[nodiscard]] std::optional<MountedDrive> findDrive(const std::string& volumeID,
                                                    const std::string& likelyPath, const MountTable& mounts,
                                                    const DeviceLookup& lookUp = lookUpDevice);

}  // namespace brindle
