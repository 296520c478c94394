#pragma once

#include "model/LocationRecord.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// How a new location meets those already included.
struct LocationOverlap {
    enum class Kind {
        same,      // one location has the same path
        inside,    // the new folder lies in a location: the innermost one
        contains,  // locations lie in the new folder: all of them, in the order given
        none,
    };
    Kind kind = Kind::none;
    std::vector<LocationID> locations;

    bool operator==(const LocationOverlap&) const = default;
};

/// Compares with every location of `existing` that was not removed, by what would be walked: a symbolic link
/// leads out of the location it lies in, and no walk leaves its volume, whatever is mounted below it. Case is
/// ignored where the volume ignores it.
[[nodiscard]] LocationOverlap findOverlap(const LocationRecord& added,
                                          std::span<const LocationRecord> existing);

/// What the user is told about an overlap; nothing when there is none.
[[nodiscard]] std::optional<std::string> overlapText(const LocationOverlap& overlap,
                                                     const LocationRecord& added,
                                                     std::span<const LocationRecord> existing);

}  // namespace brindle
