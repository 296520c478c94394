#pragma once

#include "model/Location.h"
#include "model/LocationID.h"
#include "model/UnixTime.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

using Bytes = std::vector<std::byte>;

/// A location as it is stored, one per location ever added.
struct LocationRecord {
    LocationID id;
    std::string name;
    std::string path;      // what the user chose
    std::string scanPath;  // what is walked
    LocationKind kind = LocationKind::folder;
    std::string volumeID;
    std::string volumeName;
    bool caseSensitive = true;
    std::optional<Bytes> bookmark;  // finds the folder again; see platform/Bookmark.h
    UnixTime addedAt = 0;
    std::optional<UnixTime> removedAt;   // absent while tracked
    std::optional<UnixTime> baselineAt;  // first successful check
    std::optional<UnixTime> lastCheckAt;
    std::int64_t trackedBytes = 0;
    LocationStatus status = LocationStatus::active;
    std::optional<UnixTime> estimatedAt;

    bool operator==(const LocationRecord&) const = default;
};

}  // namespace brindle
