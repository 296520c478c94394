#pragma once

#include "analysis/RangeFigures.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// Places net changes on a diverging scale: 0 for none, 1 to 4 for growth, -1 to -4 for shrinkage. A step
/// holds about a quarter of the days, ordered by magnitude, so that one huge day takes one place and does
/// not flatten the others. Equal magnitudes have equal steps; a day alone has one in the middle.
class NetScale {
public:
    static constexpr int steps = 4;  // to each side

    /// The scale of these net changes; those of 0 have no part in it.
    [[nodiscard]] static NetScale of(const std::vector<std::int64_t>& netChanges);

    [[nodiscard]] int step(std::int64_t netChange) const;

    /// The magnitude at which step 1 to 4 begins; absent for a step that no day has.
    [[nodiscard]] std::optional<std::int64_t> beginning(int step) const;

    bool operator==(const NetScale&) const = default;

private:
    std::array<std::optional<std::int64_t>, steps> beginnings_;
};

/// What the legend says of a step, -4 to 4: "+1.2 GB or more", "No net change"; empty for a step that no day
/// has.
[[nodiscard]] std::string legendText(const NetScale& scale, int step);

struct MonthDay {
    DayFigures figures;
    std::optional<int> step;  // of a recorded day, on the calendar's scale

    bool operator==(const MonthDay&) const = default;
};

using MonthWeek = std::array<std::optional<MonthDay>, 7>;

/// One month of the Storage history page.
struct MonthCalendar {
    std::string title;                        // "March 2026"
    std::array<std::string, 7> weekdayNames;  // in the order of the locale's week
    std::vector<MonthWeek> weeks;             // days of the neighbouring months are absent
    RangeFigures figures;                     // of the whole month
    /// Made of all days that are kept, not of the month's: a day keeps its colour when the page turns, and
    /// the first days of a month are not judged among themselves.
    NetScale scale;

    bool operator==(const MonthCalendar&) const = default;
};

/// The month that holds `day`.
[[nodiscard]] MonthCalendar monthCalendar(const HistorySnapshot& snapshot, const LocationScope& scope,
                                          const LocalDay& day, const Calendar& calendar);

/// The day `count` days later (earlier when negative), at most today, at least the first that is kept.
[[nodiscard]] LocalDay movedByDays(const LocalDay& day, int count, const HistorySnapshot& snapshot,
                                   const Calendar& calendar);

/// The day of the same number `count` months later, or the month's last where it is shorter; in the bounds of
/// movedByDays().
[[nodiscard]] LocalDay movedByMonths(const LocalDay& day, int count, const HistorySnapshot& snapshot,
                                     const Calendar& calendar);

}  // namespace brindle
