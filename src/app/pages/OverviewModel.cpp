#include "app/pages/OverviewModel.h"

#include "analysis/EstimateSummary.h"
#include "analysis/RangeFigures.h"
#include "app/pages/DayTexts.h"
#include "app/pages/PageText.h"
#include "checks/Failures.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <span>
#include <vector>

namespace brindle {
namespace {

constexpr int daysOfWeek = 7;
constexpr std::size_t contributorsShown = 5;

/// The larger of what came and what went on the day.
std::int64_t largestAmount(const DayFigures& figures) {
    if (const auto* estimated = figures.estimated()) return estimated->totals.bytes;
    if (const auto* recorded = figures.recorded())
        return std::max(recorded->totals.added, recorded->totals.freed);
    return 0;
}

std::vector<WeekDayRow> weekRows(const HistorySnapshot& snapshot, const LocationScope& scope,
                                 const LocalDay& first, const Calendar& calendar) {
    std::vector<DayFigures> days;
    std::int64_t largest = 0;
    for (const LocalDay& day : calendar.days(first, snapshot.today)) {
        days.push_back(dayFigures(snapshot, scope, day, calendar));
        largest = std::max(largest, largestAmount(days.back()));
    }
    const auto names = calendar.weekdayNames();
    std::vector<WeekDayRow> rows;
    for (const DayFigures& figures : days) {
        const auto place = static_cast<std::size_t>(calendar.placeInWeek(figures.day));
        WeekDayRow row{.day = figures.day,
                       .label = QString::fromStdString(names.at(place)),
                       .state = drawnState(figures),
                       .accessibleText = dayReading(calendar.mediumLabel(figures.day), figures)};
        if (const auto* estimated = figures.estimated())
            row.addedShare = shareOf(estimated->totals.bytes, largest);
        if (const auto* recorded = figures.recorded()) {
            row.addedShare = shareOf(recorded->totals.added, largest);
            row.freedShare = shareOf(recorded->totals.freed, largest);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<DriveUseRow> driveUseRows(const HistorySnapshot& snapshot, const LocationScope& scope) {
    const auto tracked = snapshot.currentlyTracked();
    std::vector<DriveUseRow> rows;
    for (const VolumeReading& drive : snapshot.volumes) {
        const bool isCovered = std::ranges::any_of(tracked, [&](const TrackedLocation& location) {
            return location.volumeID == drive.id && scope.holds(location.id);
        });
        if (!isCovered) continue;
        const std::int64_t used = drive.totalBytes - drive.freeBytes;
        rows.push_back(
            {.id = drive.id,
             .name = shownName(drive.name),
             .used = pageText(translated("{0} of {1} used"), byteAmount(used), byteAmount(drive.totalBytes)),
             .available = pageText(translated("{} available"), byteAmount(drive.availableBytes)),
             .share = shareOf(used, drive.totalBytes)});
    }
    return rows;
}

}  // namespace

OverviewModel::OverviewModel(AppModel& model, QObject* parent)
    : QObject(parent),
      model_(model),
      scopes_(model),
      week_([](const WeekDayRow& row) { return row.day; },
            {{"label", [](const WeekDayRow& row) { return row.label; }},
             {"state", [](const WeekDayRow& row) { return row.state; }},
             {"addedShare", [](const WeekDayRow& row) { return row.addedShare; }},
             {"freedShare", [](const WeekDayRow& row) { return row.freedShare; }},
             {"accessibleText", [](const WeekDayRow& row) { return row.accessibleText; }}}),
      drives_([](const DriveUseRow& row) { return row.id; },
              {{"name", [](const DriveUseRow& row) { return row.name; }},
               {"used", [](const DriveUseRow& row) { return row.used; }},
               {"available", [](const DriveUseRow& row) { return row.available; }},
               {"share", [](const DriveUseRow& row) { return row.share; }}}),
      reading_([this](const OverviewReading& reading) { take(reading); },
               [this](const std::exception& error) {
                   Q_EMIT model_.noted(
                       QString::fromStdString(failureSentence(error, model_.options().dataDirectory)));
               }) {
    connect(&model, &AppModel::historyChanged, this, &OverviewModel::update);
    connect(model.selection(), &Selection::scopeChanged, this, &OverviewModel::update);
    connect(model.settings(), &Settings::showsEstimatesChanged, this, &OverviewModel::update);
    connect(&model, &AppModel::checkingChanged, this, [this] {
        if (statement_.state == OverviewStatement::State::nothingYet) Q_EMIT changed();
    });
    update();
}

OverviewModel::State OverviewModel::state() const {
    switch (statement_.state) {
        case OverviewStatement::State::nothingYet:
            return model_.isChecking() && !model_.history().isExample ? FirstCheck : NothingYet;
        case OverviewStatement::State::recorded:
            return Recorded;
        case OverviewStatement::State::estimated:
            return Estimated;
        case OverviewStatement::State::noCheck:
            break;
    }
    return NoCheck;
}

QString OverviewModel::stateSentence() const {
    switch (state()) {
        case NothingYet:
            return translated("What came and went today will be here after the first check.");
        case FirstCheck:
            return model_.checkingText();
        case NoCheck:
            return translated("No check recorded for this date.");
        case Recorded:
        case Estimated:
            break;
    }
    return {};
}

LocalDay OverviewModel::weekFirst() const {
    return model_.calendar().addingDays(today(), 1 - daysOfWeek);
}

void OverviewModel::update() {
    const HistorySnapshot& history = model_.history();
    const LocationScope& scope = model_.selection()->scope();
    const Calendar calendar = model_.calendar();
    statement_ = overviewStatement(history, scope, weekFirst(), calendar);
    const auto summary = model_.settings()->showsEstimates() ? estimateSummary(history, scope) : std::nullopt;
    estimates_ = summary ? QString::fromStdString(brindle::sentence(*summary, calendar)) : QString();
    week_.replaceRows(weekRows(history, scope, weekFirst(), calendar));
    drives_.replaceRows(driveUseRows(history, scope));
    Q_EMIT changed();
    read();
}

void OverviewModel::read() {
    const HistorySnapshot& history = model_.history();
    const Subject subject{history.isExample, history.today, model_.selection()->scope()};
    if (std::exchange(subject_, subject) != subject) take({});
    const auto source = model_.source();
    if (!source) return reading_.forget();
    reading_.ask([source, history, scope = subject.scope, first = weekFirst()] {
        return readOverview(*source, history, scope, first, contributorsShown);
    });
}

void OverviewModel::take(const OverviewReading& reading) {
    sentence_ = QString::fromStdString(reading.sentence);
    contributors_->replaceRows(folderRows(reading.contributors, model_.history()));
    contributorsSentence_.clear();
    if (reading.isComplete && reading.contributors.empty())
        contributorsSentence_ = translated("Nothing came or went in the last seven days.");
    Q_EMIT readingChanged();
}

void OverviewModel::openDay(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= week_.rows().size()) return;
    const LocalDay day = week_.rows()[place].day;
    openChanges(day, day, DirectionFilter::all);
}

void OverviewModel::openFolder(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= contributors_->rows().size()) return;
    openChanges(weekFirst(), today(), DirectionFilter::all, contributors_->rows()[place].ref);
}

void OverviewModel::openEstimates() {
    if (const auto summary = estimateSummary(model_.history(), model_.selection()->scope()))
        openChanges(summary->first, summary->last, DirectionFilter::all);
}

void OverviewModel::openDrives() {
    model_.selection()->setDestination(Destination::locations);
}

void OverviewModel::openChanges(const LocalDay& first, const LocalDay& last, DirectionFilter direction,
                                std::optional<FolderRef> folder) {
    Selection& selection = *model_.selection();
    const auto& location = selection.scope().location;
    if (!folder && location) folder = FolderRef{*location, {}};
    ExplorerState explorer = selection.explorer();
    explorer.mode = ExplorerMode::folders;
    explorer.folder = std::move(folder);
    explorer.direction = direction;
    explorer.search.clear();
    explorer.page = 0;
    selection.setPeriod(first, last);
    selection.setExplorer(std::move(explorer));
    selection.setDestination(Destination::activity);
}

}  // namespace brindle
