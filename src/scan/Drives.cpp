#include "scan/Drives.h"

#include "platform/VolumeIdentity.h"

#include <algorithm>
#include <tuple>

namespace brindle {
namespace {

/// The topmost folder of a drive; nothing when it is not to be seen there, for instance because something
/// else is mounted over it.
std::optional<FolderProbe> probeDrive(const Mount& mount, const MountTable& mounts,
                                      const DeviceLookup& lookUp) {
    if (!isDrive(mount)) return {};
    auto probe = probeFolder(mount.target, mounts, lookUp);
    if (probe.state != FolderState::readable && probe.state != FolderState::refused) return {};
    if (probe.mount->id != mount.id || probe.volumeID.empty()) return {};
    return probe;
}

void addLocation(DriveInfo& drive, std::span<const TrackedLocation> tracked) {
    for (const auto& location : tracked) {
        if (location.kind != LocationKind::volume || location.volumeID != drive.volumeID) continue;
        if (drive.status && location.trackingEnd) continue;  // the one that is still tracked is what counts
        drive.status = location.status;
        drive.trackedBytes = location.trackedBytes;
        drive.lastCheck = location.lastCheck;
        drive.trackingStart = location.trackingStart;
        drive.trackingEnd = location.trackingEnd;
    }
}

}  // namespace

std::vector<DriveInfo> mountedDrives(std::span<const TrackedLocation> tracked, const MountTable& mounts,
                                     const DeviceLookup& lookUp) {
    std::vector<DriveInfo> drives;
    for (const auto& mount : mounts.mounts()) {
        const auto probe = probeDrive(mount, mounts, lookUp);
        if (!probe) continue;
        const auto volume = describeVolume(*probe);
        DriveInfo drive{.id = volume.id,
                        .name = volume.name,
                        .mountPath = volume.mountPath,
                        .scanPath = volume.mountPath,
                        .isInternal = volume.isInternal,
                        .isStartup = volume.mountPath == "/",
                        .caseSensitive = volume.caseSensitive,
                        .volumeID = volume.id};
        addLocation(drive, tracked);
        drives.push_back(std::move(drive));
    }
    // "/" sorts before every other path, and so stays of the mounts of one drive.
    std::ranges::sort(drives, {}, &DriveInfo::mountPath);
    std::vector<DriveInfo> once;
    for (auto& drive : drives)
        if (std::ranges::find(once, drive.id, &DriveInfo::id) == once.end()) once.push_back(std::move(drive));
    return once;
}

std::optional<MountedDrive> findDrive(const std::string& volumeID, const std::string& likelyPath,
                                      const MountTable& mounts, const DeviceLookup& lookUp) {
    std::optional<MountedDrive> found;
    for (const auto& mount : mounts.mounts()) {
        const auto probe = probeDrive(mount, mounts, lookUp);
        if (!probe || probe->volumeID != volumeID) continue;
        if (!found || mount.target == likelyPath) found = MountedDrive{mount.target, probe->state};
    }
    return found;
}

}  // namespace brindle
