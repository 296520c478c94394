#pragma once

#include "model/UnixTime.h"

#include <cstdint>
#include <optional>
#include <string>

namespace brindle {

/// One capacity sample of a mounted drive. All sizes in bytes.
struct VolumeReading {
    std::string id;
    std::string name;
    std::string mountPath;
    std::int64_t totalBytes = 0;
    std::int64_t freeBytes = 0;
    std::int64_t availableBytes = 0;              // never below freeBytes
    std::optional<std::int64_t> volumeUsedBytes;  // as the file system itself reports it
    std::optional<std::int64_t> snapshotCount;    // absent: could not be counted
    bool isInternal = false;
    UnixTime readAt = 0;

    bool operator==(const VolumeReading&) const = default;
};

/// How a drive's used space divides up. All sizes in bytes.
struct UsedSpaceBreakdown {
    std::int64_t files = 0;
    std::int64_t trash = 0;
    std::int64_t notVisible = 0;
    std::int64_t otherVolumes = 0;
    std::int64_t purgeable = 0;
    std::optional<std::int64_t> snapshotCount;
    std::int64_t total = 0;

    bool operator==(const UsedSpaceBreakdown&) const = default;
};

}  // namespace brindle
