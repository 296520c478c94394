#pragma once

#include "model/LocationRecord.h"
#include "model/SpaceBreakdown.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brindle {

/// What the latest check of a location found on the disk.
struct LocationSpace {
    std::int64_t allocatedBytes = 0;  // of everything below its root, nested locations included
    std::int64_t trashBytes = 0;      // the part of them in trash folders, without those of nested locations
};

/// What the latest checks found on each volume, every folder once: a location that lies within another one is
/// part of it, under whichever mount paths the two are known. Locations that were removed count nothing.
class SpaceOnDisk {
public:
    SpaceOnDisk(std::span<const LocationRecord> locations,
                const std::unordered_map<LocationID, LocationSpace>& found);

    [[nodiscard]] FoundSpace on(std::string_view volumeID) const;

private:
    struct Folder {
        std::string volumeID;
        std::optional<std::string> pool;
        std::string path;  // on its volume
        LocationSpace space;
        bool isNested = false;
    };

    std::vector<Folder> folders_;
};

}  // namespace brindle
