#include "model/HistorySnapshot.h"

#include <algorithm>
#include <iterator>

namespace brindle {

std::vector<TrackedLocation> HistorySnapshot::locationsIn(const LocationScope& scope) const {
    std::vector<TrackedLocation> found;
    std::ranges::copy_if(locations, std::back_inserter(found),
                         [&scope](const TrackedLocation& location) { return scope.holds(location.id); });
    return found;
}

std::vector<TrackedLocation> HistorySnapshot::currentlyTracked() const {
    std::vector<TrackedLocation> found;
    std::ranges::copy_if(locations, std::back_inserter(found),
                         [](const TrackedLocation& location) { return !location.trackingEnd; });
    return found;
}

bool HistorySnapshot::hasAnyCheck() const {
    return std::ranges::any_of(locations, [this](const TrackedLocation& location) {
        const auto days = checkedDays.find(location.id);
        return days != checkedDays.end() && !days->second.empty();
    });
}

std::optional<UnixTime> HistorySnapshot::latestCheck(const LocationScope& scope) const {
    std::optional<UnixTime> latest;
    for (const TrackedLocation& location : locations)
        if (scope.holds(location.id)) latest = std::max(latest, location.lastCheck);
    return latest;
}

std::optional<EstimateTotals> HistorySnapshot::estimate(const LocalDay& day,
                                                        const LocationScope& scope) const {
    EstimateTotals sum;
    for (const TrackedLocation& location : locations) {
        if (!scope.holds(location.id)) continue;
        const auto days = estimates.find(location.id);
        if (days == estimates.end()) continue;
        const auto found = days->second.find(day);
        if (found == days->second.end()) continue;
        sum += found->second;
    }
    return sum.files < 1 ? std::nullopt : std::optional(sum);
}

bool isTracked(const TrackedLocation& location, const LocalDay& day) {
    return location.trackingStart && *location.trackingStart <= day &&
           (!location.trackingEnd || *location.trackingEnd >= day);
}

}  // namespace brindle
