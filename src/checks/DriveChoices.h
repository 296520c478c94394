#pragma once

#include "model/LocationRecord.h"
#include "platform/Mounts.h"
#include "scan/Drives.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// A mounted drive that is not included.
struct DriveChoice {
    DriveInfo drive;
    std::int64_t totalBytes = 0;  // 0 when it cannot be told
    std::string reason;           // why it cannot be included, in a sentence; empty when it can
};

/// The mounted drives that are not included, in the order of mountedDrives(), and behind them the folders of
/// other computers, which cannot be. Waits for the drives.
[[nodiscard]] std::vector<DriveChoice> driveChoices(std::span<const LocationRecord> tracked,
                                                    const MountTable& mounts = MountTable::current());

}  // namespace brindle
