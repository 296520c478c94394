#include "analysis/Trends.h"

#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/RawText.h"
#include "model/Translation.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace brindle {
namespace {

constexpr RawTextRow<TrendRange> ranges[] = {
    {TrendRange::week, "week"}, {TrendRange::month, "month"}, {TrendRange::quarter, "quarter"}};

/// Why there is nothing to compare with: no location of the scope was tracked on `day`.
NoComparison notTrackedOn(const LocalDay& day, const HistorySnapshot& snapshot, const LocationScope& scope,
                          const Calendar& calendar) {
    std::optional<LocalDay> began;
    for (const TrackedLocation& location : snapshot.locations)
        if (scope.holds(location.id) && location.trackingStart > day)
            began = began ? std::min(began, location.trackingStart) : location.trackingStart;
    if (!began)
        return {DayGap::notTracked,
                translated("There is nothing to compare with: nothing was tracked then.")};
    return {DayGap::notTracked, filled(translated("There is nothing to compare with: tracking began on {}."),
                                       calendar.mediumLabel(*began))};
}

std::variant<RangeFigures, NoComparison> figuresBefore(const HistorySnapshot& snapshot,
                                                       const LocationScope& scope, const RangeFigures& range,
                                                       const Calendar& calendar) {
    const LocalDay first = calendar.addingDays(range.first, -range.days.all());
    if (!isTracked(snapshot, scope, first)) return notTrackedOn(first, snapshot, scope, calendar);
    if (first < firstKeptDay(snapshot, calendar))
        return NoComparison{
            DayGap::notKept,
            filled(translatedCount("There is nothing to compare with: history is kept for {} day.",
                                   "There is nothing to compare with: history is kept for {} days.",
                                   snapshot.retentionDays),
                   groupedNumber(snapshot.retentionDays))};
    RangeFigures before =
        rangeFigures(snapshot, scope, first, calendar.addingDays(range.first, -1), calendar);
    if (!before.totals)
        return NoComparison{DayGap::noCheck,
                            translated("There is nothing to compare with: no check covers the days before.")};
    return before;
}

std::vector<ScopeStep> stepsIn(const RangeFigures& range, const HistorySnapshot& snapshot,
                               const LocationScope& scope, const Calendar& calendar) {
    std::vector<ScopeStep> steps;
    const auto addStep = [&](const LocationID& location, const LocalDay& day) {
        if (day < range.first || day > range.last) return;
        const LocalDay eve = calendar.addingDays(day, -1);
        // Where the line begins or ends, it makes no step.
        if (!trackedBytes(snapshot, scope, eve, calendar) || !trackedBytes(snapshot, scope, day, calendar))
            return;
        const auto before = trackedBytes(snapshot, {location}, eve, calendar);
        const auto after = trackedBytes(snapshot, {location}, day, calendar);
        if (before.has_value() != after.has_value())
            steps.push_back({day, location, after.value_or(0) - before.value_or(0)});
    };
    for (const TrackedLocation& location : snapshot.locations) {
        const auto sizes = snapshot.trackedTotals.find(location.id);
        if (!scope.holds(location.id) || sizes == snapshot.trackedTotals.end() || sizes->second.empty())
            continue;
        addStep(location.id, sizes->second.begin()->first);
        if (location.trackingEnd) addStep(location.id, calendar.addingDays(*location.trackingEnd, 1));
    }
    std::ranges::stable_sort(steps, {}, &ScopeStep::day);
    return steps;
}

std::vector<LocationID> trackedInPart(const HistorySnapshot& snapshot, const LocationScope& scope,
                                      const LocalDay& first, const LocalDay& last) {
    std::vector<LocationID> found;
    for (const TrackedLocation& location : snapshot.locations) {
        if (!scope.holds(location.id) || !location.trackingStart) continue;
        const LocalDay start = *location.trackingStart;
        const LocalDay end = location.trackingEnd.value_or(last);
        if (start <= last && end >= first && (start > first || end < last)) found.push_back(location.id);
    }
    return found;
}

std::string nameOf(const LocationID& id, const HistorySnapshot& snapshot) {
    const auto location = std::ranges::find(snapshot.locations, id, &TrackedLocation::id);
    return fileNameText(location == snapshot.locations.end() ? id.rawValue : location->name);
}

}  // namespace

std::string_view rawText(TrendRange range) {
    return rawTextOf<TrendRange>(ranges, range);
}

std::optional<TrendRange> trendRangeFrom(std::string_view rawText) {
    return caseOf<TrendRange>(ranges, rawText);
}

int dayCount(TrendRange range) {
    switch (range) {
        case TrendRange::week:
            return 7;
        case TrendRange::month:
            return 30;
        case TrendRange::quarter:
            break;
    }
    return 90;
}

Trend trend(const HistorySnapshot& snapshot, const LocationScope& scope, const LocalDay& lastDay,
            TrendRange range, const Calendar& calendar) {
    const LocalDay first = calendar.addingDays(lastDay, 1 - dayCount(range));
    Trend trend{.range = range};
    for (const LocalDay& day : calendar.days(first, lastDay))
        trend.days.push_back({.figures = dayFigures(snapshot, scope, day, calendar),
                              .trackedBytes = trackedBytes(snapshot, scope, day, calendar)});
    trend.figures = rangeFigures(snapshot, scope, first, lastDay, calendar);
    trend.before = figuresBefore(snapshot, scope, trend.figures, calendar);
    trend.steps = stepsIn(trend.figures, snapshot, scope, calendar);
    if (const auto* before = std::get_if<RangeFigures>(&trend.before))
        trend.trackedInPart =
            trackedInPart(snapshot, scope, before->first, std::min(lastDay, snapshot.today));
    return trend;
}

std::string sentence(const ScopeStep& step, const HistorySnapshot& snapshot, const Calendar& calendar) {
    const char* text = step.bytes < 0 ? translated("“{0}” ({1}) isn't counted any more from {2} on.")
                                      : translated("“{0}” ({1}) is counted from {2} on.");
    return filled(text, nameOf(step.location, snapshot),
                  byteAmount(step.bytes < 0 ? -step.bytes : step.bytes), calendar.mediumLabel(step.day));
}

std::string comparisonNote(const Trend& trend, const HistorySnapshot& snapshot) {
    if (trend.trackedInPart.empty()) return {};
    std::vector<std::string> names;
    for (const LocationID& id : trend.trackedInPart)
        names.push_back(fmt::format("“{}”", nameOf(id, snapshot)));
    return filled(translated("Not tracked on all of the days compared: {}."), fmt::join(names, ", "));
}

}  // namespace brindle
