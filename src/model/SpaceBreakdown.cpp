#include "model/SpaceBreakdown.h"

#include <algorithm>

namespace brindle {
namespace {

/// `bytes`, or as much of it as lies from 0 to `most`.
std::int64_t upTo(std::int64_t most, std::int64_t bytes) {
    return std::clamp<std::int64_t>(bytes, 0, most);
}

}  // namespace

UsedSpaceBreakdown spaceBreakdown(const VolumeReading& reading, const FoundSpace& found) {
    const std::int64_t capacity = std::max<std::int64_t>(reading.totalBytes, 0);
    const std::int64_t free = upTo(capacity, reading.freeBytes);
    UsedSpaceBreakdown parts{.snapshotCount = reading.snapshotCount, .total = capacity - free};
    parts.purgeable = upTo(parts.total, upTo(capacity, reading.availableBytes) - free);

    const std::int64_t allocated = std::max<std::int64_t>(found.allocatedBytes, 0);
    const std::int64_t trash = upTo(allocated, found.trashBytes);
    parts.trash = upTo(parts.total, trash);
    std::int64_t left = parts.total - parts.trash;
    parts.files = upTo(left, allocated - trash);
    left -= parts.files;
    if (found.otherVolumesBytes) {
        // Where the file system tells how much of its pool a volume uses, the others use the rest.
        const auto& used = reading.volumeUsedBytes;
        parts.otherVolumes =
            upTo(left, used ? parts.total - upTo(parts.total, *used) : *found.otherVolumesBytes);
    }
    parts.notVisible = left - parts.otherVolumes;
    return parts;
}

}  // namespace brindle
