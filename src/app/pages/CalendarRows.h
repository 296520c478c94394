#pragma once

#include "analysis/MonthCalendar.h"
#include "app/ListModel.h"

#include <QString>
#include <memory>
#include <vector>

// The lists of the Storage history page.

namespace brindle {

/// A day in the calendar of a month. Rows are told apart by their place, so that views keep their cells when
/// the month changes.
struct CalendarDayRow {
    LocalDay day;
    int week = 0;   // of the month, from 0
    int place = 0;  // in the week, from 0
    QString number;
    QString state;  // see drawnState()
    QString word;   // what is marked on it: "Partial", "Estimated"; empty for others
    QString net;    // empty unless it is recorded
    int step = 0;   // on the scale of net changes; 0 as well when it is not recorded
    bool isToday = false;
    QString reading;  // for a screen reader

    bool operator==(const CalendarDayRow&) const = default;
};

/// A colour of the calendar.
struct LegendRow {
    int step = 0;
    QString text;  // empty for a step that no day has

    bool operator==(const LegendRow&) const = default;
};

using CalendarDayList = ListModel<CalendarDayRow, int>;
using LegendList = ListModel<LegendRow, int>;

[[nodiscard]] std::unique_ptr<CalendarDayList> makeCalendarDayList();
[[nodiscard]] std::unique_ptr<LegendList> makeLegendList();

[[nodiscard]] std::vector<CalendarDayRow> calendarDayRows(const MonthCalendar& month,
                                                          const HistorySnapshot& snapshot,
                                                          const Calendar& calendar);
/// All steps, from what was freed most to what was added most.
[[nodiscard]] std::vector<LegendRow> legendRows(const NetScale& scale);

}  // namespace brindle
