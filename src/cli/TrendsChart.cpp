#include "cli/TrendsChart.h"

#include "cli/BarText.h"
#include "cli/Table.h"
#include "model/DisplayWidth.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Terminal.h"

#include <algorithm>
#include <functional>

namespace brindle {
namespace {

constexpr int mostRows = 31;
constexpr int daysOfWeek = 7;

/// A bar of the chart: some days and what is known of them.
struct ChartRow {
    std::string label;
    RangeFigures figures;
    std::string note;  // what the figures leave out, or why there are none
};

const char* gapWord(const DayCounts& days) {
    if (days.future > 0) return translated("to come");
    if (days.noCheck > 0) return translated("no check");
    if (days.notKept > 0) return translated("no longer kept");
    return translated("not tracked");
}

std::string noteOn(const RangeFigures& figures) {
    const DayCounts& days = figures.days;
    const bool isDay = days.all() == 1;
    std::string note;
    const auto add = [&note](const std::string& text) { note += (note.empty() ? "" : ", ") + text; };
    if (days.recorded == 0 && days.estimated == 0) return gapWord(days);
    if (days.recorded > 0 && days.recorded < days.all())
        add(filled(translated("{0} of {1} days"), groupedNumber(days.recorded), groupedNumber(days.all())));
    if (days.partial > 0)
        add(isDay ? translated("partial") : filled(translated("{} partial"), groupedNumber(days.partial)));
    if (figures.estimated && !figures.totals)
        add(filled(translated("about {}, estimated"), byteAmount(figures.estimated->bytes)));
    return note;
}

std::vector<ChartRow> rowsOf(const Trend& trend, const HistorySnapshot& snapshot, const LocationScope& scope,
                             const Calendar& calendar) {
    const LocalDay last = trend.figures.last;
    const bool isByDay = dayCount(trend.range) <= mostRows;
    std::vector<ChartRow> rows;
    // Weeks end with the last day, so that the newest one is whole.
    for (LocalDay end = last; end >= trend.figures.first;) {
        const LocalDay begin =
            isByDay ? end : std::max(calendar.addingDays(end, 1 - daysOfWeek), trend.figures.first);
        const RangeFigures figures = rangeFigures(snapshot, scope, begin, end, calendar);
        rows.push_back({.label = calendar.shortLabel(begin), .figures = figures, .note = noteOn(figures)});
        end = calendar.addingDays(begin, -1);
    }
    std::ranges::reverse(rows);
    return rows;
}

std::size_t widest(const std::vector<std::string>& texts) {
    std::size_t width = 0;
    for (const std::string& text : texts) width = std::max(width, displayWidth(text));
    return width;
}

/// The columns that the bars may take beside everything else.
std::size_t columnsOfBars(const std::vector<ChartRow>& rows, const Output& output) {
    constexpr std::size_t usual = 80;
    constexpr std::size_t most = 100;
    constexpr std::size_t least = 10;
    constexpr std::size_t gaps = 2 * 4 + 1;  // in front of four columns, and the zero line
    std::vector<std::string> labels;
    std::vector<std::string> amounts;
    std::vector<std::string> notes;
    for (const auto& [label, figures, note] : rows) {
        labels.push_back(label);
        if (!figures.totals) continue;  // its note stands where the bars would be
        amounts.push_back(signedByteAmount(figures.totals->added));
        amounts.push_back(signedByteAmount(-figures.totals->freed));
        if (!note.empty()) notes.push_back(" " + note);
    }
    const std::size_t others = gaps + widest(labels) + 2 * widest(amounts) + widest(notes);
    const std::size_t width = std::min(output.width().value_or(usual), others + most);
    return std::max(width, others + least) - others;
}

/// Where the bars end: at the largest amount, unless a few days are so far above all others that nothing
/// could be read off theirs any more.
std::int64_t endOfBars(const std::vector<ChartRow>& rows) {
    constexpr std::size_t rowsOfOneThatMayBeCut = 10;
    constexpr std::int64_t timesTheNext = 4;
    std::vector<std::int64_t> amounts;
    for (const ChartRow& row : rows)
        if (row.figures.totals)
            amounts.push_back(std::max(row.figures.totals->added, row.figures.totals->freed));
    if (amounts.empty()) return 0;
    std::ranges::sort(amounts, std::greater());
    const std::size_t mostCut = std::min(rows.size() / rowsOfOneThatMayBeCut + 1, amounts.size() - 1);
    for (std::size_t cut = mostCut; cut > 0; --cut)
        if (amounts[cut] > 0 && amounts[cut - 1] / timesTheNext > amounts[cut]) return amounts[cut];
    return amounts.front();
}

Cell barCell(const ChartRow& row, const BarText& bars) {
    const bool isKnown = row.figures.totals.has_value();
    Cell cell(std::vector<CellPart>{{bars.freed(isKnown ? row.figures.totals->freed : 0), TextStyle::freed},
                                    {bars.zeroLine()},
                                    {bars.added(isKnown ? row.figures.totals->added : 0), TextStyle::added}});
    if (!row.note.empty()) cell.parts.push_back({" " + row.note, TextStyle::faint});
    return cell;
}

}  // namespace

void printChart(Output& output, const Trend& trend, const HistorySnapshot& snapshot,
                const LocationScope& scope, const Calendar& calendar) {
    const auto rows = rowsOf(trend, snapshot, scope, calendar);
    std::int64_t mostAdded = 0;
    std::int64_t mostFreed = 0;
    for (const ChartRow& row : rows) {
        if (!row.figures.totals) continue;
        mostAdded = std::max(mostAdded, row.figures.totals->added);
        mostFreed = std::max(mostFreed, row.figures.totals->freed);
    }
    const std::int64_t end = endOfBars(rows);
    const BarText bars(std::min(mostAdded, end), std::min(mostFreed, end), columnsOfBars(rows, output),
                       writesUTF8() ? BarText::Characters::blocks : BarText::Characters::ascii);
    const Cell unknown(writesUTF8() ? "–" : "-", TextStyle::faint);
    Table table({ColumnKind::word, ColumnKind::figure, ColumnKind::figure, ColumnKind::word});
    for (const ChartRow& row : rows) {
        const auto& totals = row.figures.totals;
        table.add({Cell(row.label), totals ? amountCell(totals->added) : unknown,
                   totals ? amountCell(-totals->freed) : unknown, barCell(row, bars)});
    }
    if (rows.size() < trend.days.size()) output.line(translated("A row is a week; the day is its first."));
    table.print(output);
    if (mostAdded > end || mostFreed > end)
        output.paragraph(filled(translated("The bars end at {0}; more than that is marked {1}."),
                                byteAmount(end), mostAdded > end ? bars.addedMark() : bars.freedMark()),
                         2);
}

}  // namespace brindle
