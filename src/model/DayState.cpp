#include "model/DayState.h"

namespace brindle {
namespace {

template <class DaysOfLocations>
bool holds(const DaysOfLocations& days, const LocationID& location, const LocalDay& day) {
    const auto found = days.find(location);
    return found != days.end() && found->second.contains(day);
}

}  // namespace

DayState dayState(const HistorySnapshot& snapshot, const LocalDay& day, const LocationScope& scope) {
    if (day > snapshot.today) return DayFuture{};
    DayRecorded recorded;
    bool hasCheck = false;
    for (const TrackedLocation& location : snapshot.locations) {
        if (!scope.holds(location.id) || !isTracked(location, day)) continue;
        if (!holds(snapshot.checkedDays, location.id, day)) {
            recorded.partial = true;
            continue;
        }
        hasCheck = true;
        if (holds(snapshot.partialDays, location.id, day)) recorded.partial = true;
        if (holds(snapshot.dayTotals, location.id, day))
            recorded.totals += snapshot.dayTotals.at(location.id).at(day);
    }
    if (hasCheck) return recorded;
    if (const auto estimate = snapshot.estimate(day, scope)) return DayEstimated{*estimate};
    return DayWithoutCheck{};
}

}  // namespace brindle
