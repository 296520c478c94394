#pragma once

#include "model/Calendar.h"
#include "model/DayState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// Why there are no figures for a day or for a range of days. In this order: the first that holds.
enum class DayGap {
    future,
    notTracked,  // no location of the scope was tracked
    notKept,     // earlier than the history that is kept
    noCheck,
};

/// "future", "notTracked", "notKept", "noCheck".
[[nodiscard]] std::string_view rawText(DayGap gap);

/// Of one day, for a person: "No check covers this day."
[[nodiscard]] std::string sentence(DayGap gap, const HistorySnapshot& snapshot);

/// What is known about one day over one scope, and if nothing is, why.
struct DayFigures {
    LocalDay day;
    DayState state = DayWithoutCheck{};
    std::optional<DayGap> gap;  // absent when the state is recorded or estimated

    bool operator==(const DayFigures&) const = default;

    /// Null when the day is not recorded.
    [[nodiscard]] const DayRecorded* recorded() const { return std::get_if<DayRecorded>(&state); }
    /// Null when the day is not estimated.
    [[nodiscard]] const DayEstimated* estimated() const { return std::get_if<DayEstimated>(&state); }
};

/// How many days of a range are in which state. Together they are all its days; `partial` ones are recorded,
/// too.
struct DayCounts {
    int recorded = 0;
    int partial = 0;
    int estimated = 0;
    int noCheck = 0;
    int notTracked = 0;
    int notKept = 0;
    int future = 0;

    bool operator==(const DayCounts&) const = default;

    void add(const DayFigures& figures);
    [[nodiscard]] int all() const { return recorded + estimated + noCheck + notTracked + notKept + future; }
};

/// "5 of 7 days recorded, 1 partial, 1 estimated, 1 without a check": what the figures of a range rest on.
[[nodiscard]] std::string coverageText(const DayCounts& days);

/// What a range of days adds up to over one scope. Measured and estimated amounts are never summed.
struct RangeFigures {
    LocalDay first;
    LocalDay last;
    std::optional<ChangeTotals> totals;       // of the recorded days; absent when none is
    std::optional<EstimateTotals> estimated;  // of the estimated days; absent when none is
    DayCounts days;
    std::optional<std::int64_t> trackedBefore;  // tracked size at the end of the day before `first`
    std::optional<std::int64_t> trackedAtEnd;   // at the end of `last`, or now when that is in the future

    bool operator==(const RangeFigures&) const = default;
};

[[nodiscard]] DayFigures dayFigures(const HistorySnapshot& snapshot, const LocationScope& scope,
                                    const LocalDay& day, const Calendar& calendar);

/// Of the days from `first` through `last`.
[[nodiscard]] RangeFigures rangeFigures(const HistorySnapshot& snapshot, const LocationScope& scope,
                                        const LocalDay& first, const LocalDay& last,
                                        const Calendar& calendar);

/// The tracked size at the end of a day, in logical bytes: of each location the last size recorded on that
/// day or before, added up. A location counts from the day of its first recorded size through the last day
/// on which it is tracked; one that joins the scope later adds nothing to the days before, whose size nobody
/// knows. Absent when no location counts, in the future, and for days so early that sizes before them may
/// no longer be kept.
[[nodiscard]] std::optional<std::int64_t> trackedBytes(const HistorySnapshot& snapshot,
                                                       const LocationScope& scope, const LocalDay& day,
                                                       const Calendar& calendar);

/// Whether any location of the scope was tracked on the day.
[[nodiscard]] bool isTracked(const HistorySnapshot& snapshot, const LocationScope& scope,
                             const LocalDay& day);

/// The earliest day that the snapshot keeps figures of.
[[nodiscard]] LocalDay firstKeptDay(const HistorySnapshot& snapshot, const Calendar& calendar);

}  // namespace brindle
