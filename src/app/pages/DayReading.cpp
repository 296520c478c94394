#include "app/pages/DayReading.h"

#include "analysis/DaySentence.h"
#include "model/DayState.h"
#include "model/FolderSummary.h"

#include <limits>
#include <optional>

namespace brindle {
namespace {

/// What the day's figures are; absent when it has none.
std::optional<ChangeSource> kindOf(const DayState& state) {
    if (std::holds_alternative<DayRecorded>(state)) return ChangeSource::measured;
    if (std::holds_alternative<DayEstimated>(state)) return ChangeSource::estimated;
    return {};
}

/// The locations of the scope that are still tracked on the day: where there is one, its name goes unsaid.
std::vector<TrackedLocation> trackedOn(const HistorySnapshot& snapshot, const LocationScope& scope,
                                       const LocalDay& day) {
    auto locations = snapshot.locationsIn(scope);
    std::erase_if(locations, [&day](const TrackedLocation& location) {
        return location.trackingEnd && *location.trackingEnd < day;
    });
    return locations;
}

}  // namespace

std::string readDaySentence(HistorySource& source, const HistorySnapshot& snapshot,
                            const LocationScope& scope, const LocalDay& day) {
    const auto kind = kindOf(dayState(snapshot, day, scope));
    if (!kind) return {};
    FolderSums sums(std::numeric_limits<std::size_t>::max());
    source.streamChanges(day, day, scope, *kind, [&sums](const FileChange& change) { sums.add(change); });
    return changeSentence(sums.summaries(), trackedOn(snapshot, scope, day), *kind);
}

}  // namespace brindle
