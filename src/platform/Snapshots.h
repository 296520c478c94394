#pragma once

#include "platform/FolderProbe.h"
#include "platform/Mounts.h"

#include <cstdint>
#include <optional>

namespace brindle {

/// How many local snapshots the file system holds on which a folder lies that was found readable. The volumes
/// of one btrfs pool have the pool's count in common: its read-only snapshots, whose whole list the system
/// shows to an administrator only. Absent where there are no snapshots of this kind, or not all are to be
/// seen.
[[nodiscard]] std::optional<std::int64_t> countSnapshots(const FolderProbe& probe, const MountTable& mounts);

}  // namespace brindle
