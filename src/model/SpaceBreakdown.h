#pragma once

#include "model/Volume.h"

#include <cstdint>
#include <optional>

namespace brindle {

/// What checks found on the disk of one volume, each file once. All sizes are allocated bytes.
struct FoundSpace {
    std::int64_t allocatedBytes = 0;
    std::int64_t trashBytes = 0;  // the part of them in trash folders
    /// What was found on the other volumes of its pool; absent where a volume has its space to itself.
    std::optional<std::int64_t> otherVolumesBytes;

    bool operator==(const FoundSpace&) const = default;
};

/// Divides the used space of a volume: files + trash + notVisible + otherVolumes = total, none of them
/// negative, whatever the figures. Used is what an ordinary user cannot have, so blocks that are reserved for
/// the system count as not visible. Checks and reading are not of one moment: what was found beyond the used
/// space is left out, of the files first.
[[nodiscard]] UsedSpaceBreakdown spaceBreakdown(const VolumeReading& reading, const FoundSpace& found);

}  // namespace brindle
