#include "app/pages/CalendarRows.h"

#include "app/pages/DayTexts.h"
#include "model/NumberText.h"

namespace brindle {
namespace {

constexpr int daysInWeek = 7;

CalendarDayRow rowOf(const MonthDay& cell, int week, int place, const HistorySnapshot& snapshot,
                     const Calendar& calendar) {
    const DayFigures& figures = cell.figures;
    CalendarDayRow row{.day = figures.day,
                       .week = week,
                       .place = place,
                       .number = QString::fromStdString(groupedNumber(figures.day.day)),
                       .state = drawnState(figures),
                       .word = {},
                       .net = {},
                       .step = cell.step.value_or(0),
                       .isToday = figures.day == snapshot.today,
                       .reading = dayReading(calendar.mediumLabel(figures.day), figures)};
    const auto* recorded = figures.recorded();
    if (recorded != nullptr) row.net = QString::fromStdString(signedByteAmount(recorded->totals.net()));
    if (figures.estimated() != nullptr || (recorded != nullptr && recorded->partial))
        row.word = stateWord(figures);
    return row;
}

}  // namespace

std::unique_ptr<CalendarDayList> makeCalendarDayList() {
    return std::make_unique<CalendarDayList>(
        [](const CalendarDayRow& row) { return row.week * daysInWeek + row.place; },
        std::vector<CalendarDayList::Role>{
            {"week", [](const CalendarDayRow& row) { return row.week; }},
            {"place", [](const CalendarDayRow& row) { return row.place; }},
            {"number", [](const CalendarDayRow& row) { return row.number; }},
            {"state", [](const CalendarDayRow& row) { return row.state; }},
            {"word", [](const CalendarDayRow& row) { return row.word; }},
            {"net", [](const CalendarDayRow& row) { return row.net; }},
            {"step", [](const CalendarDayRow& row) { return row.step; }},
            {"isToday", [](const CalendarDayRow& row) { return row.isToday; }},
            {"reading", [](const CalendarDayRow& row) { return row.reading; }}});
}

std::unique_ptr<LegendList> makeLegendList() {
    return std::make_unique<LegendList>(
        [](const LegendRow& row) { return row.step; },
        std::vector<LegendList::Role>{{"step", [](const LegendRow& row) { return row.step; }},
                                      {"text", [](const LegendRow& row) { return row.text; }}});
}

std::vector<CalendarDayRow> calendarDayRows(const MonthCalendar& month, const HistorySnapshot& snapshot,
                                            const Calendar& calendar) {
    std::vector<CalendarDayRow> rows;
    for (std::size_t week = 0; week < month.weeks.size(); ++week)
        for (std::size_t place = 0; place < month.weeks[week].size(); ++place)
            if (const auto& cell = month.weeks[week].at(place))
                rows.push_back(
                    rowOf(*cell, static_cast<int>(week), static_cast<int>(place), snapshot, calendar));
    return rows;
}

std::vector<LegendRow> legendRows(const NetScale& scale) {
    std::vector<LegendRow> rows;
    for (int step = -NetScale::steps; step <= NetScale::steps; ++step)
        rows.push_back({.step = step, .text = QString::fromStdString(legendText(scale, step))});
    return rows;
}

}  // namespace brindle
