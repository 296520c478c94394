#include "app/pages/ActivityTexts.h"

#include "analysis/PartialDay.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace brindle {
namespace {

bool isKnown(const RangeFigures& range, bool withEstimates) {
    return range.totals || (withEstimates && range.estimated);
}

}  // namespace

QString periodTitle(const PeriodOf& period, const Calendar& calendar) {
    const std::string last = calendar.longLabel(period.last);
    if (period.isDay()) return QString::fromStdString(last);
    return pageText(translated("{0} to {1}"),
                    period.first.year == period.last.year ? calendar.mediumLabel(period.first)
                                                          : calendar.longLabel(period.first),
                    last);
}

QString gapSentence(const PeriodOf& period, const Calendar& calendar, bool isChecking) {
    const auto& [history, scope, first, last, withEstimates] = period;
    const RangeFigures range = rangeFigures(history, scope, first, last, calendar);
    if (isKnown(range, withEstimates)) return {};
    if (!history.hasAnyCheck())
        return isChecking ? translated(
                                "The first check is running. It sets the starting point; what changes "
                                "after it is listed here.")
                          : translated(
                                "Nothing has been checked yet. What changes between checks is listed "
                                "here.");
    if (!period.isDay()) return translated("No check covers these days.");
    const DayFigures day = dayFigures(history, scope, first, calendar);
    // A day whose estimates nobody wants has no gap of its own.
    const DayGap unwanted = isTracked(history, scope, first) ? DayGap::noCheck : DayGap::notTracked;
    return QString::fromStdString(sentence(day.gap.value_or(unwanted), history));
}

QString coverageSentence(const PeriodOf& period, const Calendar& calendar) {
    const auto& [history, scope, first, last, withEstimates] = period;
    const RangeFigures range = rangeFigures(history, scope, first, last, calendar);
    if (!isKnown(range, withEstimates)) return {};
    if (!range.totals)
        return period.isDay()
                   ? translated("An estimate from the dates of files: no check covers this day.")
                   : translated("An estimate from the dates of files: no check covers these days.");
    if (range.days.recorded == range.days.all() && range.days.partial == 0) return {};
    if (period.isDay())
        return QString::fromStdString(
            fmt::format("{}", fmt::join(partialSentences(history, scope, first), " ")));
    return pageText("{}.", coverageText(range.days));
}

QString totalsText(const ChangeTotals& totals) {
    std::string text =
        filled(translatedCount("{} file", "{} files", totals.count), groupedNumber(totals.count));
    if (totals.added > 0) text = filled(translated("{0}, {1} added"), text, byteAmount(totals.added));
    if (totals.freed > 0) text = filled(translated("{0}, {1} freed"), text, byteAmount(totals.freed));
    return QString::fromStdString(text);
}

}  // namespace brindle
