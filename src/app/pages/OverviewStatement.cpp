#include "app/pages/OverviewStatement.h"

#include "analysis/PartialDay.h"
#include "analysis/RangeFigures.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <fmt/ranges.h>
#include <variant>

namespace brindle {
namespace {

void tellRecorded(OverviewStatement& statement, const ChangeTotals& totals) {
    statement.state = OverviewStatement::State::recorded;
    const std::int64_t net = totals.net();
    statement.netDirection = (net > 0) - (net < 0);
    statement.net = QString::fromStdString(signedByteAmount(net));
    statement.netExact = QString::fromStdString(exactByteAmount(net));
    statement.added = QString::fromStdString(signedByteAmount(totals.added));
    statement.addedExact = QString::fromStdString(exactByteAmount(totals.added));
    statement.freed = QString::fromStdString(signedByteAmount(-totals.freed));
    statement.freedExact = QString::fromStdString(exactByteAmount(-totals.freed));
    if (totals.count > 0)
        statement.files = pageText(translatedCount("{} file changed", "{} files changed", totals.count),
                                   groupedNumber(totals.count));
}

void tellEstimated(OverviewStatement& statement, const EstimateTotals& totals) {
    statement.state = OverviewStatement::State::estimated;
    statement.net = pageText(translated("About {}"), byteAmount(totals.bytes));
    statement.netExact = QString::fromStdString(exactByteAmount(totals.bytes));
    statement.files =
        pageText(translatedCount("{} file", "{} files", totals.files), groupedNumber(totals.files));
}

void tellWeek(OverviewStatement& statement, const RangeFigures& week) {
    statement.weekCoverage = QString::fromStdString(coverageText(week.days));
    if (!week.totals) return;
    statement.weekAdded = QString::fromStdString(signedByteAmount(week.totals->added));
    statement.weekAddedExact = QString::fromStdString(exactByteAmount(week.totals->added));
    statement.weekFreed = QString::fromStdString(signedByteAmount(-week.totals->freed));
    statement.weekFreedExact = QString::fromStdString(exactByteAmount(-week.totals->freed));
}

QString lastCheckText(const HistorySnapshot& snapshot, const LocationScope& scope, const Calendar& calendar) {
    const auto latest = snapshot.latestCheck(scope);
    if (!latest) return {};
    std::int64_t bytes = 0;
    std::int64_t count = 0;
    for (const TrackedLocation& location : snapshot.currentlyTracked()) {
        if (!scope.holds(location.id) || !location.lastCheck) continue;
        bytes += location.trackedBytes;
        ++count;
    }
    const std::string time = calendar.timeLabel(*latest);
    if (count < 2) return pageText(translated("Last checked {0}. {1} are tracked."), time, byteAmount(bytes));
    return pageText(translated("Last checked {0}. {1} are tracked in {2} locations."), time,
                    byteAmount(bytes), groupedNumber(count));
}

QStringList troublesOf(const HistorySnapshot& snapshot, const LocationScope& scope) {
    QStringList troubles;
    for (const TrackedLocation& location : snapshot.currentlyTracked()) {
        if (!scope.holds(location.id)) continue;
        if (location.status == LocationStatus::disconnected)
            troubles += pageText(translated("“{}” is disconnected. Its record goes on when it is back."),
                                 fileNameText(location.name));
        else if (location.status == LocationStatus::needsAccess)
            troubles +=
                pageText(translated("“{}” can't be read. Its record goes on when Brindle has access."),
                         fileNameText(location.name));
    }
    return troubles;
}

}  // namespace

OverviewStatement overviewStatement(const HistorySnapshot& snapshot, const LocationScope& scope,
                                    const LocalDay& weekFirst, const Calendar& calendar) {
    OverviewStatement statement{.day = QString::fromStdString(calendar.longLabel(snapshot.today))};
    statement.troubles = troublesOf(snapshot, scope);
    if (!snapshot.latestCheck(scope)) return statement;

    statement.state = OverviewStatement::State::noCheck;
    const DayState today = dayState(snapshot, snapshot.today, scope);
    if (const auto* recorded = std::get_if<DayRecorded>(&today)) {
        tellRecorded(statement, recorded->totals);
        if (recorded->partial)
            statement.partial =
                pageText("{}", fmt::join(partialSentences(snapshot, scope, snapshot.today), " "));
    }
    if (const auto* estimated = std::get_if<DayEstimated>(&today))
        tellEstimated(statement, estimated->totals);
    statement.lastCheck = lastCheckText(snapshot, scope, calendar);
    tellWeek(statement, rangeFigures(snapshot, scope, weekFirst, snapshot.today, calendar));
    return statement;
}

}  // namespace brindle
