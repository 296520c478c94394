#include "analysis/RangeFigures.h"

#include "model/CheckedSum.h"
#include "model/NumberText.h"
#include "model/RawText.h"
#include "model/Translation.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace brindle {
namespace {

constexpr RawTextRow<DayGap> gaps[] = {{DayGap::future, "future"},
                                       {DayGap::notTracked, "notTracked"},
                                       {DayGap::notKept, "notKept"},
                                       {DayGap::noCheck, "noCheck"}};

DayGap gapOn(const HistorySnapshot& snapshot, const LocationScope& scope, const LocalDay& day,
             const Calendar& calendar) {
    if (day > snapshot.today) return DayGap::future;
    if (!isTracked(snapshot, scope, day)) return DayGap::notTracked;
    return day < firstKeptDay(snapshot, calendar) ? DayGap::notKept : DayGap::noCheck;
}

/// The last size of a location recorded on the day or before, while the location counts.
std::optional<std::int64_t> sizeOn(const HistorySnapshot& snapshot, const TrackedLocation& location,
                                   const LocalDay& day) {
    const auto sizes = snapshot.trackedTotals.find(location.id);
    if (sizes == snapshot.trackedTotals.end()) return {};
    if (!location.trackingStart || (location.trackingEnd && *location.trackingEnd < day)) return {};
    const auto after = sizes->second.upper_bound(day);
    return after == sizes->second.begin() ? std::nullopt : std::optional(std::prev(after)->second);
}

}  // namespace

std::string_view rawText(DayGap gap) {
    return rawTextOf<DayGap>(gaps, gap);
}

std::string sentence(DayGap gap, const HistorySnapshot& snapshot) {
    switch (gap) {
        case DayGap::future:
            return translated("This day is yet to come.");
        case DayGap::notTracked:
            return translated("Nothing was tracked on this day.");
        case DayGap::notKept:
            return filled(translatedCount("This day is no longer kept: history is kept for {} day.",
                                          "This day is no longer kept: history is kept for {} days.",
                                          snapshot.retentionDays),
                          groupedNumber(snapshot.retentionDays));
        case DayGap::noCheck:
            break;
    }
    return translated("No check covers this day.");
}

void DayCounts::add(const DayFigures& figures) {
    if (const auto* day = figures.recorded()) {
        ++recorded;
        if (day->partial) ++partial;
    } else if (!figures.gap) {
        ++estimated;
    } else if (*figures.gap == DayGap::future) {
        ++future;
    } else if (*figures.gap == DayGap::notTracked) {
        ++notTracked;
    } else if (*figures.gap == DayGap::notKept) {
        ++notKept;
    } else {
        ++noCheck;
    }
}

std::string coverageText(const DayCounts& days) {
    std::string text =
        filled(translatedCount("{0} of {1} day recorded", "{0} of {1} days recorded", days.all()),
               groupedNumber(days.recorded), groupedNumber(days.all()));
    const auto add = [&text](const char* what, int count) {
        if (count > 0) text += filled(what, groupedNumber(count));
    };
    add(translated(", {} partial"), days.partial);
    add(translated(", {} estimated"), days.estimated);
    add(translated(", {} without a check"), days.noCheck);
    add(translated(", {} not tracked"), days.notTracked);
    add(translated(", {} no longer kept"), days.notKept);
    add(translated(", {} yet to come"), days.future);
    return text;
}

DayFigures dayFigures(const HistorySnapshot& snapshot, const LocationScope& scope, const LocalDay& day,
                      const Calendar& calendar) {
    DayFigures figures{.day = day, .state = dayState(snapshot, day, scope)};
    if (figures.recorded() == nullptr && figures.estimated() == nullptr)
        figures.gap = gapOn(snapshot, scope, day, calendar);
    return figures;
}

RangeFigures rangeFigures(const HistorySnapshot& snapshot, const LocationScope& scope, const LocalDay& first,
                          const LocalDay& last, const Calendar& calendar) {
    RangeFigures range{.first = first, .last = last};
    for (const LocalDay& day : calendar.days(first, last)) {
        const DayFigures figures = dayFigures(snapshot, scope, day, calendar);
        range.days.add(figures);
        if (const auto* recorded = figures.recorded()) {
            if (!range.totals) range.totals.emplace();
            *range.totals += recorded->totals;
        } else if (const auto* estimated = figures.estimated()) {
            if (!range.estimated) range.estimated.emplace();
            *range.estimated += estimated->totals;
        }
    }
    range.trackedBefore = trackedBytes(snapshot, scope, calendar.addingDays(first, -1), calendar);
    if (first <= snapshot.today)
        range.trackedAtEnd = trackedBytes(snapshot, scope, std::min(last, snapshot.today), calendar);
    return range;
}

std::optional<std::int64_t> trackedBytes(const HistorySnapshot& snapshot, const LocationScope& scope,
                                         const LocalDay& day, const Calendar& calendar) {
    // Of the sizes before the first kept day each location keeps the last one only.
    if (day > snapshot.today || day < calendar.addingDays(firstKeptDay(snapshot, calendar), -1)) return {};
    std::optional<std::int64_t> sum;
    for (const TrackedLocation& location : snapshot.locations) {
        if (!scope.holds(location.id)) continue;
        if (const auto size = sizeOn(snapshot, location, day)) sum = checkedSum(sum.value_or(0), *size);
    }
    return sum;
}

bool isTracked(const HistorySnapshot& snapshot, const LocationScope& scope, const LocalDay& day) {
    return std::ranges::any_of(snapshot.locations, [&](const TrackedLocation& location) {
        return scope.holds(location.id) && isTracked(location, day);
    });
}

LocalDay firstKeptDay(const HistorySnapshot& snapshot, const Calendar& calendar) {
    return calendar.addingDays(snapshot.today, 1 - snapshot.retentionDays);
}

}  // namespace brindle
