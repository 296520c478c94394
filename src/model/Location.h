#pragma once

#include "model/LocalDay.h"
#include "model/LocationID.h"
#include "model/UnixTime.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

enum class LocationKind { folder, volume };  // volume: a whole drive

enum class LocationStatus { active, checking, paused, needsAccess, disconnected };

/// The texts under which the values are stored.
[[nodiscard]] std::string_view rawText(LocationKind kind);
[[nodiscard]] std::string_view rawText(LocationStatus status);
/// Unknown texts read as `folder` and as `active`.
[[nodiscard]] LocationKind locationKindFrom(std::string_view rawText);
[[nodiscard]] LocationStatus locationStatusFrom(std::string_view rawText);

/// A location as the history shows it.
struct TrackedLocation {
    LocationID id;
    std::string name;
    std::string path;  // absolute path of the root
    LocationKind kind = LocationKind::folder;
    std::string volumeID;  // the drive that holds it
    LocationStatus status = LocationStatus::active;
    std::int64_t trackedBytes = 0;          // logical size at the last check
    std::optional<UnixTime> lastCheck;      // end of the last completed check
    std::optional<LocalDay> trackingStart;  // first tracked day; absent: tracked on no day
    std::optional<LocalDay> trackingEnd;    // last tracked day; absent: tracking goes on
    bool caseSensitive = true;              // whether its drive tells names apart that differ in case only

    bool operator==(const TrackedLocation&) const = default;
};

}  // namespace brindle
