#pragma once

#include "model/Change.h"
#include "model/Estimates.h"
#include "model/LocalDay.h"
#include "model/Location.h"
#include "model/Retention.h"
#include "model/Volume.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace brindle {

/// Everything that the pages derive their figures from, as it was at one moment. Of the maps by day, all but
/// `trackedTotals` begin with the first retained day.
struct HistorySnapshot {
    bool isExample = false;
    LocalDay today;
    int retentionDays = keptDays;
    std::vector<TrackedLocation> locations;  // in the source's order, removed ones included
    std::vector<VolumeReading> volumes;      // the latest of each drive that has any
    /// Days on which a check of the location completed; those of them with folders that could not be read.
    std::unordered_map<LocationID, std::unordered_set<LocalDay>> checkedDays;
    std::unordered_map<LocationID, std::unordered_set<LocalDay>> partialDays;
    /// Logical bytes at the end of a day, ordered, so that days without a check can take over the ones
    /// before.
    std::unordered_map<LocationID, std::map<LocalDay, std::int64_t>> trackedTotals;
    std::unordered_map<LocationID, std::unordered_map<LocalDay, ChangeTotals>> dayTotals;
    std::unordered_map<LocationID, std::unordered_map<LocalDay, EstimateTotals>> estimates;
    std::unordered_map<std::string, UsedSpaceBreakdown> breakdowns;  // by drive

    bool operator==(const HistorySnapshot&) const = default;

    [[nodiscard]] std::vector<TrackedLocation> locationsIn(const LocationScope& scope) const;
    [[nodiscard]] std::vector<TrackedLocation> currentlyTracked() const;
    [[nodiscard]] bool hasAnyCheck() const;
    /// Absent when no location of the scope was ever checked.
    [[nodiscard]] std::optional<UnixTime> latestCheck(const LocationScope& scope) const;
    /// Over the locations of the scope, tracked on the day or not; absent when it puts no file on the day.
    [[nodiscard]] std::optional<EstimateTotals> estimate(const LocalDay& day,
                                                         const LocationScope& scope) const;
};

/// Whether the day lies in the location's tracking range; never while it has no first day.
[[nodiscard]] bool isTracked(const TrackedLocation& location, const LocalDay& day);

}  // namespace brindle
