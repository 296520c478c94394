#include "app/pages/TrendsModel.h"

#include "app/pages/DayTexts.h"
#include "app/pages/PageText.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>

namespace brindle {
namespace {

QString periodText(const LocalDay& first, const LocalDay& last, const Calendar& calendar) {
    return pageText(translated("{0} – {1}"), calendar.shortLabel(first), calendar.shortLabel(last));
}

QString comparisonText(const std::variant<RangeFigures, NoComparison>& before, const Calendar& calendar) {
    if (const auto* none = std::get_if<NoComparison>(&before)) return QString::fromStdString(none->sentence);
    const auto& range = std::get<RangeFigures>(before);
    return pageText(translated("Compared with {0}: {1}."),
                    periodText(range.first, range.last, calendar).toStdString(), coverageText(range.days));
}

}  // namespace

TrendsModel::TrendsModel(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    connect(&model, &AppModel::historyChanged, this, [this] { update(Changed::history); });
    for (const auto changed : {&Selection::destinationChanged, &Selection::scopeChanged,
                               &Selection::periodChanged, &Selection::rangeChanged})
        connect(model.selection(), changed, this, [this] { update(Changed::selection); });
}

void TrendsModel::update(Changed what) {
    if (what == Changed::history) shown_.reset();
    const Selection& selection = *model_.selection();
    if (selection.destination() != Destination::trends) return;
    const Shown wanted{selection.day(), selection.range(), selection.scope()};
    if (shown_ == wanted) return;
    shown_ = wanted;

    const Calendar calendar = model_.calendar();
    trend_ = trend(model_.history(), wanted.scope, wanted.day, wanted.range, calendar);
    takeChart(calendar);
    takeFigures(calendar);
    if (std::exchange(read_, wanted) != wanted) currentRow_ = days_->rowCount() - 1;
    readCurrent();
    Q_EMIT changed();
}

void TrendsModel::takeChart(const Calendar& calendar) {
    const ChartScale scale = changeScaleOf(trend_);
    days_->replaceRows(trendDayRows(trend_, scale, calendar));
    dayMarks_->replaceRows(dayMarkRows(trend_, calendar));
    changeLines_->replaceRows(scaleRows(scale));
    zeroPlace_ = scale.place(0);
    SizeLine line = sizeLineOf(trend_);
    sizeLines_->replaceRows(std::move(line.scale));
    sizeShares_ = std::move(line.shares);
}

void TrendsModel::takeFigures(const Calendar& calendar) {
    const HistorySnapshot& history = model_.history();
    const RangeFigures& range = trend_.figures;
    period_ = periodText(range.first, range.last, calendar);
    hasEarlier_ = firstKeptDay(history, calendar) < range.first;
    hasFigures_ = range.totals || range.estimated;
    figures_->replaceRows(rangeFigureRows(trend_));
    coverage_ = QString::fromStdString(coverageText(range.days));

    comparison_ = comparisonText(trend_.before, calendar);
    notes_.clear();
    for (const ScopeStep& step : trend_.steps)
        notes_.push_back(QString::fromStdString(sentence(step, history, calendar)));
    if (const std::string note = comparisonNote(trend_, history); !note.empty())
        notes_.push_back(QString::fromStdString(note));
}

void TrendsModel::readCurrent() {
    const TrendDay& day = trend_.days.at(static_cast<std::size_t>(currentRow_));
    currentDay_ = QString::fromStdString(model_.calendar().longLabel(day.figures.day));
    std::vector<FigureRow> rows = dayFigureRows(day.figures.state);
    if (day.trackedBytes) rows.push_back(sizeFigure(translated("Tracked size"), *day.trackedBytes));
    currentFigures_->replaceRows(std::move(rows));
    Q_EMIT currentChanged();
}

QStringList TrendsModel::ranges() const {
    return {translated("Week"), translated("Month"), translated("Quarter")};
}

void TrendsModel::setShowsTable(bool shows) {
    if (std::exchange(showsTable_, shows) != shows) Q_EMIT showsTableChanged();
}

void TrendsModel::setCurrentRow(int row) {
    if (trend_.days.empty()) return;
    row = std::clamp(row, 0, days_->rowCount() - 1);
    if (std::exchange(currentRow_, row) != row) readCurrent();
}

QString TrendsModel::currentState() const {
    return currentRow_ < 0 ? QString() : days_->rows().at(static_cast<std::size_t>(currentRow_)).state;
}

QString TrendsModel::currentWord() const {
    return currentRow_ < 0 ? QString() : days_->rows().at(static_cast<std::size_t>(currentRow_)).word;
}

void TrendsModel::chooseRange(int range) {
    if (range >= 0 && range < ranges().size()) model_.selection()->setRange(static_cast<TrendRange>(range));
}

void TrendsModel::moveByRanges(int count) {
    const Calendar calendar = model_.calendar();
    const int days = dayCount(model_.selection()->range());
    const LocalDay earliest = calendar.addingDays(firstKeptDay(model_.history(), calendar), days - 1);
    const LocalDay moved = calendar.addingDays(model_.selection()->day(), count * days);
    model_.selection()->setDay(std::max(moved, earliest));
}

void TrendsModel::showToday() {
    model_.selection()->setDay(model_.selection()->today());
}

void TrendsModel::showDay(int row) {
    if (row < 0 || row >= days_->rowCount()) return;
    const LocalDay day = days_->rows()[static_cast<std::size_t>(row)].day;
    model_.selection()->setDay(day);
    model_.selection()->setDestination(Destination::activity);
}

void TrendsModel::showRange() {
    Selection& selection = *model_.selection();
    selection.setPeriod(selection.rangeFirst(), selection.day());
    selection.setDestination(Destination::activity);
}

void TrendsModel::showFolder(int row) {
    const auto& folders = model_.contributors()->rows();
    if (row < 0 || std::cmp_greater_equal(row, folders.size())) return;
    Selection& selection = *model_.selection();
    ExplorerState explorer = selection.explorer();
    explorer.folder = folders[static_cast<std::size_t>(row)].ref;
    explorer.mode = ExplorerMode::folders;
    explorer.direction = DirectionFilter::all;
    explorer.search.clear();
    explorer.page = 0;
    selection.setExplorer(std::move(explorer));
    showRange();
}

}  // namespace brindle
