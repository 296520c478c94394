#include "app/pages/OverviewReading.h"

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

OverviewReading readOverview(HistorySource& source, const HistorySnapshot& snapshot,
                             const LocationScope& scope, const LocalDay& weekFirst,
                             std::size_t contributors) {
    const LocalDay& today = snapshot.today;
    OverviewReading reading{
        .sentence = {},
        .contributors = source.periodContributors(weekFirst, today, scope, contributors).get(),
        .isComplete = true};
    if (const auto kind = kindOf(dayState(snapshot, today, scope))) {
        FolderSums sums(std::numeric_limits<std::size_t>::max());
        source.streamChanges(today, today, scope, *kind,
                             [&sums](const FileChange& change) { sums.add(change); });
        reading.sentence = changeSentence(sums.summaries(), trackedOn(snapshot, scope, today), *kind);
    }
    return reading;
}

}  // namespace brindle
