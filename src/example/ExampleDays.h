#pragma once

#include "example/ExampleFiles.h"
#include "model/Change.h"
#include "model/Estimates.h"
#include "model/Volume.h"

#include <array>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace brindle {

/// What checks of one place found by now.
struct PlaceHistory {
    LocalDay start;  // the day of its first check
    UnixTime baselineAt = 0;
    UnixTime lastCheck = 0;
    std::map<LocalDay, std::int64_t> trackedBytes;  // at the last check of every day that has one
    std::set<LocalDay> partialDays;
    std::vector<VolumeReading> samples;  // at the same checks
    UsedSpaceBreakdown breakdown;        // at the last of them
};

/// The whole example as it is known at one moment.
struct ExampleDays {
    LocalDay today;
    std::array<PlaceHistory, 2> places;  // by Place
    std::vector<FileChange> changes;     // by day, time and id
    std::vector<FileChange> estimates;   // by day, size and id
};

[[nodiscard]] LocationID locationOf(Place place);

/// Whatever the moment, each day is the same as soon as it is over, as long as it is not among the first ones
/// that are kept, where the first checks and the estimates lie.
[[nodiscard]] ExampleDays exampleDays(const Calendar& calendar, UnixTime now, std::uint64_t seed);

}  // namespace brindle
