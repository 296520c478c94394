#include "platform/Capacity.h"

#include "platform/FolderProbe.h"
#include "platform/Paths.h"
#include "platform/Snapshots.h"
#include "platform/VolumeIdentity.h"

#include <algorithm>
#include <cstdint>
#include <sys/statvfs.h>

namespace brindle {
namespace {

/// Nothing when a file system states more than a byte count holds.
std::optional<std::int64_t> bytes(fsblkcnt_t blocks, unsigned long blockSize) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(blocks, blockSize, &product)) return {};
    return product;
}

}  // namespace

std::optional<VolumeReading> readCapacity(const std::string& path, const std::string& volumeID,
                                          const std::string& fallbackName, UnixTime now,
                                          const MountTable& mounts) {
    const auto probe = probeFolder(standardizedPath(path), mounts);
    struct statvfs status {};
    if (probe.state != FolderState::readable || ::fstatvfs(probe.folder.get(), &status) != 0) return {};

    const auto total = bytes(status.f_blocks, status.f_frsize);
    if (!total || *total == 0) return {};
    const auto free = bytes(std::min(status.f_bavail, status.f_blocks), status.f_frsize);
    const auto volume = describeVolume(probe);
    VolumeReading reading{.id = volumeID,
                          .name = volume.name.empty() ? fallbackName : volume.name,
                          .mountPath = volume.mountPath,
                          .totalBytes = *total,
                          .freeBytes = *free,
                          .availableBytes = *free,
                          .snapshotCount = countSnapshots(probe, mounts),
                          .isInternal = volume.isInternal,
                          .readAt = now};
    if (!sharesPool(*probe.mount) && status.f_bfree < status.f_blocks)
        reading.volumeUsedBytes = bytes(status.f_blocks - status.f_bfree, status.f_frsize);
    return reading;
}

}  // namespace brindle
