#include "analysis/MonthCalendar.h"

#include "model/CheckedSum.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <cstdlib>

namespace brindle {
namespace {

std::int64_t magnitude(std::int64_t netChange) {
    return netChange < 0 ? checkedDifference(0, netChange) : netChange;
}

LocalDay lastOfMonth(const LocalDay& day, const Calendar& calendar) {
    return calendar.addingDays(calendar.addingMonths(day, 1), -1);
}

LocalDay clampedToKept(const LocalDay& day, const HistorySnapshot& snapshot, const Calendar& calendar) {
    return std::clamp(day, firstKeptDay(snapshot, calendar), snapshot.today);
}

NetScale scaleOfKeptDays(const HistorySnapshot& snapshot, const LocationScope& scope,
                         const Calendar& calendar) {
    std::vector<std::int64_t> netChanges;
    for (const LocalDay& day : calendar.days(firstKeptDay(snapshot, calendar), snapshot.today)) {
        const DayState state = dayState(snapshot, day, scope);
        if (const auto* recorded = std::get_if<DayRecorded>(&state))
            netChanges.push_back(recorded->totals.net());
    }
    return NetScale::of(netChanges);
}

}  // namespace

NetScale NetScale::of(const std::vector<std::int64_t>& netChanges) {
    std::vector<std::int64_t> magnitudes;
    for (const std::int64_t net : netChanges)
        if (net != 0) magnitudes.push_back(magnitude(net));
    std::ranges::sort(magnitudes);
    NetScale scale;
    for (auto same = magnitudes.begin(); same != magnitudes.end();) {
        const auto next = std::upper_bound(same, magnitudes.end(), *same);
        // The middle of the ranks that equal magnitudes share, as a part of all ranks.
        const auto middle = (same - magnitudes.begin()) + (next - magnitudes.begin());
        const auto step = (middle * steps - 1) / (2 * std::ssize(magnitudes));
        auto& beginning = scale.beginnings_.at(static_cast<std::size_t>(step));
        if (!beginning) beginning = *same;
        same = next;
    }
    return scale;
}

int NetScale::step(std::int64_t netChange) const {
    if (netChange == 0) return 0;
    int step = 1;
    for (int i = 1; i <= steps; ++i)
        if (const auto from = beginning(i); from && *from <= magnitude(netChange)) step = i;
    return netChange < 0 ? -step : step;
}

std::optional<std::int64_t> NetScale::beginning(int step) const {
    return beginnings_.at(static_cast<std::size_t>(step - 1));
}

std::string legendText(const NetScale& scale, int step) {
    if (step == 0) return translated("No net change");
    const auto from = scale.beginning(std::abs(step));
    if (!from) return {};
    return filled(translated("{} or more"), signedByteAmount(step < 0 ? -*from : *from));
}

MonthCalendar monthCalendar(const HistorySnapshot& snapshot, const LocationScope& scope, const LocalDay& day,
                            const Calendar& calendar) {
    const LocalDay first = calendar.addingMonths(day, 0);
    const LocalDay last = lastOfMonth(day, calendar);
    MonthCalendar month{.title = calendar.monthLabel(first),
                        .weekdayNames = calendar.weekdayNames(),
                        .figures = rangeFigures(snapshot, scope, first, last, calendar),
                        .scale = scaleOfKeptDays(snapshot, scope, calendar)};
    std::size_t placeBefore = std::tuple_size_v<MonthWeek>;
    for (const LocalDay& each : calendar.days(first, last)) {
        const auto place = static_cast<std::size_t>(calendar.placeInWeek(each));
        // A time zone that crossed the date line may have left out the first day of a week.
        if (place <= placeBefore) month.weeks.emplace_back();
        placeBefore = place;
        MonthDay& cell =
            month.weeks.back().at(place).emplace(MonthDay{dayFigures(snapshot, scope, each, calendar)});
        if (const auto* recorded = cell.figures.recorded())
            cell.step = month.scale.step(recorded->totals.net());
    }
    return month;
}

LocalDay movedByDays(const LocalDay& day, int count, const HistorySnapshot& snapshot,
                     const Calendar& calendar) {
    return clampedToKept(calendar.addingDays(day, count), snapshot, calendar);
}

LocalDay movedByMonths(const LocalDay& day, int count, const HistorySnapshot& snapshot,
                       const Calendar& calendar) {
    LocalDay moved = calendar.addingMonths(day, count);
    moved.day = std::min(day.day, lastOfMonth(moved, calendar).day);
    return clampedToKept(moved, snapshot, calendar);
}

}  // namespace brindle
