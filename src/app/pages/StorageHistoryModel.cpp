#include "app/pages/StorageHistoryModel.h"

#include "analysis/EstimateSummary.h"
#include "app/pages/DayReading.h"
#include "app/pages/DayTexts.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>

namespace brindle {
namespace {

/// What file dates put on the day, whether it is recorded or not.
QString estimateSentence(const HistorySnapshot& history, const LocationScope& scope, const LocalDay& day,
                         const Calendar& calendar) {
    const auto totals = history.estimate(day, scope);
    if (!totals) return {};
    return QString::fromStdString(
        sentence(EstimateSummary{.totals = *totals, .first = day, .last = day}, calendar));
}

std::vector<FigureRow> figureRows(const RangeFigures& figures) {
    std::vector<FigureRow> rows;
    if (figures.totals) rows = changeFigures(*figures.totals);
    if (figures.estimated) rows.push_back(estimateFigure(*figures.estimated));
    return rows;
}

}  // namespace

StorageHistoryModel::StorageHistoryModel(AppModel& model, QObject* parent)
    : QObject(parent),
      model_(model),
      sentence_([this](const std::string& sentence) { setSentence(QString::fromStdString(sentence)); },
                // The lists of the same day are read for the Activity page, which tells what is wrong.
                [this](const std::exception&) { setSentence({}); }) {
    connect(&model, &AppModel::historyChanged, this, [this] { update(Changed::history); });
    for (const auto changed : {&Selection::destinationChanged, &Selection::scopeChanged,
                               &Selection::periodChanged, &Selection::calendarMonthChanged})
        connect(model.selection(), changed, this, [this] { update(Changed::selection); });
}

void StorageHistoryModel::update(Changed what) {
    if (what == Changed::history) shown_.reset();
    const Selection& selection = *model_.selection();
    if (selection.destination() != Destination::history) return;
    const Shown wanted{selection.day(), selection.calendarMonth(), selection.scope()};
    if (shown_ == wanted) return;
    const bool isSameDay = described_ == std::pair(wanted.day, wanted.scope);
    const bool isHistoryNew = !shown_;
    shown_ = wanted;

    const Calendar calendar = model_.calendar();
    takeMonth(calendar);
    takeDay(calendar);
    if (!isSameDay) setSentence({});
    if (!isSameDay || isHistoryNew) askForSentence();
    Q_EMIT changed();
}

void StorageHistoryModel::takeMonth(const Calendar& calendar) {
    const auto& [day, monthShown, scope] = *shown_;
    const HistorySnapshot& history = model_.history();
    const MonthCalendar month = monthCalendar(history, scope, monthShown, calendar);
    month_ = QString::fromStdString(month.title);
    weekdayNames_.clear();
    for (const std::string& name : month.weekdayNames) weekdayNames_.push_back(QString::fromStdString(name));
    weekCount_ = static_cast<int>(month.weeks.size());
    days_->replaceRows(calendarDayRows(month, history, calendar));
    const auto selected = std::ranges::find(days_->rows(), day, &CalendarDayRow::day);
    selectedRow_ = selected == days_->rows().end() ? -1 : static_cast<int>(selected - days_->rows().begin());
    hasPreviousMonth_ = firstKeptDay(history, calendar) < monthShown;
    hasNextMonth_ = calendar.addingMonths(monthShown, 1) <= history.today;
    legend_->replaceRows(legendRows(month.scale));
    monthFigures_->replaceRows(figureRows(month.figures));
    monthCoverage_ = QString::fromStdString(coverageText(month.figures.days));
}

void StorageHistoryModel::takeDay(const Calendar& calendar) {
    const auto& [day, monthShown, scope] = *shown_;
    const HistorySnapshot& history = model_.history();
    const DayFigures figures = brindle::dayFigures(history, scope, day, calendar);
    const auto* recorded = figures.recorded();
    day_ = QString::fromStdString(calendar.longLabel(day));
    dayState_ = drawnState(figures);
    dayWord_ = stateWord(figures);
    dayFigures_->replaceRows(dayFigureRows(figures.state));
    dayNotes_ = brindle::dayNotes(figures, history, scope);
    dayEstimate_ = recorded == nullptr ? QString() : estimateSentence(history, scope, day, calendar);
    hasChanges_ = figures.estimated() != nullptr || !dayEstimate_.isEmpty() ||
                  (recorded != nullptr && recorded->totals.count > 0);
}

void StorageHistoryModel::askForSentence() {
    const auto source = model_.source();
    if (!source) return sentence_.forget();
    described_ = std::pair(shown_->day, shown_->scope);
    sentence_.ask([source, history = model_.history(), day = shown_->day, scope = shown_->scope] {
        return readDaySentence(*source, history, scope, day);
    });
}

void StorageHistoryModel::setSentence(const QString& sentence) {
    if (std::exchange(daySentence_, sentence) != sentence) Q_EMIT daySentenceChanged();
}

QString StorageHistoryModel::legendBegin() const {
    const auto& rows = legend_->rows();
    return rows.empty() || rows.front().text.isEmpty() ? QString(translated("Freed")) : rows.front().text;
}

QString StorageHistoryModel::legendEnd() const {
    const auto& rows = legend_->rows();
    return rows.empty() || rows.back().text.isEmpty() ? QString(translated("Added")) : rows.back().text;
}

void StorageHistoryModel::selectRow(int row) {
    if (row < 0 || row >= days_->rowCount()) return;
    const LocalDay day = days_->rows()[static_cast<std::size_t>(row)].day;
    if (day <= model_.history().today) model_.selection()->setDay(day);
}

void StorageHistoryModel::moveByDays(int count) {
    model_.selection()->setDay(
        movedByDays(model_.selection()->day(), count, model_.history(), model_.calendar()));
}

void StorageHistoryModel::moveByMonths(int count) {
    model_.selection()->setDay(
        movedByMonths(model_.selection()->day(), count, model_.history(), model_.calendar()));
}

void StorageHistoryModel::moveInWeek(bool toStart) {
    if (selectedRow_ < 0) return;
    const auto& rows = days_->rows();
    const auto [begin, end] = std::ranges::equal_range(
        rows, rows[static_cast<std::size_t>(selectedRow_)].week, {}, &CalendarDayRow::week);
    model_.selection()->setDay(toStart ? begin->day : std::prev(end)->day);
}

void StorageHistoryModel::showToday() {
    model_.selection()->setDay(model_.selection()->today());
}

void StorageHistoryModel::showChanges() {
    model_.selection()->setDay(model_.selection()->day());
    model_.selection()->setDestination(Destination::activity);
}

void StorageHistoryModel::exportDay() {
    model_.selection()->setDay(model_.selection()->day());
    model_.prepareExport();
}

}  // namespace brindle
