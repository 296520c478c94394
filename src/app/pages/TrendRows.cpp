#include "app/pages/TrendRows.h"

#include "app/pages/DayTexts.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>

namespace brindle {
namespace {

QString amountText(std::int64_t bytes) {
    return QString::fromStdString(byteAmount(bytes));
}

QString signedText(std::int64_t bytes) {
    return QString::fromStdString(signedByteAmount(bytes));
}

TrendDayRow rowOf(const TrendDay& day, const Calendar& calendar) {
    const DayFigures& figures = day.figures;
    TrendDayRow row{.day = figures.day,
                    .label = QString::fromStdString(calendar.shortLabel(figures.day)),
                    .state = drawnState(figures),
                    .word = stateWord(figures),
                    .reading = dayReading(calendar.mediumLabel(figures.day), figures)};
    if (const auto* recorded = figures.recorded()) {
        row.added = signedText(recorded->totals.added);
        row.freed = signedText(-recorded->totals.freed);
        row.net = signedText(recorded->totals.net());
    } else if (const auto* estimated = figures.estimated()) {
        row.added = pageText(translated("About {}"), byteAmount(estimated->totals.bytes));
    }
    if (day.trackedBytes) {
        row.tracked = amountText(*day.trackedBytes);
        row.reading = pageText(translated("{0}. Tracked size {1}."), row.reading.toStdString(),
                               byteAmount(*day.trackedBytes));
    }
    return row;
}

/// What a bar shows above the zero line and below it.
ChangeTotals drawnTotals(const DayFigures& figures) {
    if (const auto* recorded = figures.recorded()) return recorded->totals;
    if (const auto* estimated = figures.estimated()) return {.added = estimated->totals.bytes};
    return {};
}

std::vector<FigureRow> figuresOf(const RangeFigures& figures) {
    std::vector<FigureRow> rows;
    if (figures.totals) rows = changeFigures(*figures.totals);
    if (figures.trackedAtEnd) rows.push_back(sizeFigure(translated("Tracked size"), *figures.trackedAtEnd));
    if (figures.estimated) rows.push_back(estimateFigure(*figures.estimated));
    return rows;
}

}  // namespace

std::unique_ptr<TrendDayList> makeTrendDayList() {
    return std::make_unique<TrendDayList>(
        [](const TrendDayRow& row) { return row.place; },
        std::vector<TrendDayList::Role>{
            {"label", [](const TrendDayRow& row) { return row.label; }},
            {"state", [](const TrendDayRow& row) { return row.state; }},
            {"word", [](const TrendDayRow& row) { return row.word; }},
            {"added", [](const TrendDayRow& row) { return row.added; }},
            {"freed", [](const TrendDayRow& row) { return row.freed; }},
            {"net", [](const TrendDayRow& row) { return row.net; }},
            {"tracked", [](const TrendDayRow& row) { return row.tracked; }},
            {"addedLength", [](const TrendDayRow& row) { return row.addedLength; }},
            {"freedLength", [](const TrendDayRow& row) { return row.freedLength; }},
            {"reading", [](const TrendDayRow& row) { return row.reading; }}});
}

std::unique_ptr<ScaleList> makeScaleList() {
    return std::make_unique<ScaleList>(
        [](const ScaleRow& row) { return row.place; },
        std::vector<ScaleList::Role>{{"place", [](const ScaleRow& row) { return row.place; }},
                                     {"text", [](const ScaleRow& row) { return row.text; }},
                                     {"isZero", [](const ScaleRow& row) { return row.isZero; }}});
}

std::unique_ptr<DayMarkList> makeDayMarkList() {
    return std::make_unique<DayMarkList>(
        [](const DayMarkRow& row) { return row.place; },
        std::vector<DayMarkList::Role>{{"place", [](const DayMarkRow& row) { return row.place; }},
                                       {"weekday", [](const DayMarkRow& row) { return row.weekday; }},
                                       {"date", [](const DayMarkRow& row) { return row.date; }}});
}

ChartScale changeScaleOf(const Trend& trend) {
    ChangeTotals most;
    for (const TrendDay& day : trend.days) {
        const ChangeTotals drawn = drawnTotals(day.figures);
        most.added = std::max(most.added, drawn.added);
        most.freed = std::max(most.freed, drawn.freed);
    }
    return changeScale(most.added, most.freed);
}

std::vector<TrendDayRow> trendDayRows(const Trend& trend, const ChartScale& scale, const Calendar& calendar) {
    std::vector<TrendDayRow> rows;
    rows.reserve(trend.days.size());
    const double zero = scale.place(0);
    for (const TrendDay& day : trend.days) {
        TrendDayRow& row = rows.emplace_back(rowOf(day, calendar));
        const ChangeTotals drawn = drawnTotals(day.figures);
        row.place = static_cast<int>(rows.size()) - 1;
        row.addedLength = scale.place(drawn.added) - zero;
        row.freedLength = zero - scale.place(-drawn.freed);
    }
    return rows;
}

SizeLine sizeLineOf(const Trend& trend) {
    std::vector<std::int64_t> sizes;
    for (const TrendDay& day : trend.days)
        if (day.trackedBytes) sizes.push_back(*day.trackedBytes);
    SizeLine line;
    if (sizes.empty()) return line;
    const auto [least, most] = std::ranges::minmax(sizes);
    const ChartScale scale = sizeScale(least, most);
    line.scale = scaleRows(scale);
    for (const TrendDay& day : trend.days)
        line.shares.push_back(day.trackedBytes ? scale.place(*day.trackedBytes) : -1);
    return line;
}

std::vector<ScaleRow> scaleRows(const ChartScale& scale) {
    std::vector<ScaleRow> rows;
    for (const ChartScale::Line& line : scale.lines)
        rows.push_back({.place = scale.place(line.bytes),
                        .text = QString::fromStdString(line.text),
                        .isZero = line.bytes == 0});
    return rows;
}

std::vector<DayMarkRow> dayMarkRows(const Trend& trend, const Calendar& calendar) {
    const auto weekdays = calendar.weekdayNames();
    std::vector<DayMarkRow> rows;
    for (std::size_t i = 0; i < trend.days.size(); ++i) {
        const LocalDay& day = trend.days[i].figures.day;
        const int inWeek = calendar.placeInWeek(day);
        if (trend.range != TrendRange::week && inWeek != 0) continue;
        DayMarkRow& row = rows.emplace_back();
        row.place = static_cast<int>(i);
        row.date = QString::fromStdString(calendar.dateLabel(day));
        if (trend.range == TrendRange::week)
            row.weekday = QString::fromStdString(weekdays.at(static_cast<std::size_t>(inWeek)));
    }
    return rows;
}

std::vector<FigureRow> rangeFigureRows(const Trend& trend) {
    std::vector<FigureRow> rows = figuresOf(trend.figures);
    if (const auto* before = std::get_if<RangeFigures>(&trend.before)) {
        const std::vector<FigureRow> earlier = figuresOf(*before);
        for (FigureRow& row : rows)
            if (const auto same = std::ranges::find(earlier, row.caption, &FigureRow::caption);
                same != earlier.end())
                row.before = same->amount;
    }
    return rows;
}

}  // namespace brindle
