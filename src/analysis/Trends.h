#pragma once

#include "analysis/RangeFigures.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace brindle {

/// A number of days that end with a selected one.
enum class TrendRange { week, month, quarter };

/// "week", "month", "quarter".
[[nodiscard]] std::string_view rawText(TrendRange range);
[[nodiscard]] std::optional<TrendRange> trendRangeFrom(std::string_view rawText);

/// 7, 30 or 90.
[[nodiscard]] int dayCount(TrendRange range);

struct TrendDay {
    DayFigures figures;
    std::optional<std::int64_t> trackedBytes;  // see trackedBytes()

    bool operator==(const TrendDay&) const = default;
};

/// A step in the tracked size that nothing added or freed: from this day on a location counts, or counts no
/// more. `bytes` is its size, negative when it leaves.
struct ScopeStep {
    LocalDay day;
    LocationID location;
    std::int64_t bytes = 0;

    bool operator==(const ScopeStep&) const = default;
};

/// Why a range is not compared with the one before it.
struct NoComparison {
    DayGap reason = DayGap::noCheck;
    std::string sentence;  // for a person

    bool operator==(const NoComparison&) const = default;
};

/// The figures of the Trends page.
struct Trend {
    TrendRange range = TrendRange::week;
    std::vector<TrendDay> days;  // every day of the range, in order
    RangeFigures figures;
    /// The same number of days before it: only when all of them are kept, something was tracked from the
    /// first of them on, and at least one is recorded.
    std::variant<RangeFigures, NoComparison> before;
    std::vector<ScopeStep> steps;  // in the line of tracked sizes, by day
    /// Locations that were tracked in the two ranges, but not on all of their days: what they add to one
    /// range the other may lack. Empty when there is no comparison.
    std::vector<LocationID> trackedInPart;

    bool operator==(const Trend&) const = default;
};

/// The range that ends with `lastDay`. Days without a check have no figures, and no figure of the range is
/// zero for want of one.
[[nodiscard]] Trend trend(const HistorySnapshot& snapshot, const LocationScope& scope,
                          const LocalDay& lastDay, TrendRange range, const Calendar& calendar);

/// "“Photos” (1.2 GB) is counted from Saturday, March 7 on."
[[nodiscard]] std::string sentence(const ScopeStep& step, const HistorySnapshot& snapshot,
                                   const Calendar& calendar);

/// "Not tracked on all of the days compared: “Photos”." Empty when all were.
[[nodiscard]] std::string comparisonNote(const Trend& trend, const HistorySnapshot& snapshot);

}  // namespace brindle
