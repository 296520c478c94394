#include "app/pages/ActivityModel.h"

#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {
namespace {

QString amount(const std::optional<ChangeTotals>& totals, std::int64_t (*part)(const ChangeTotals&)) {
    return totals ? QString::fromStdString(signedByteAmount(part(*totals))) : QString();
}

QString exact(const std::optional<ChangeTotals>& totals, std::int64_t (*part)(const ChangeTotals&)) {
    return totals ? QString::fromStdString(exactByteAmount(part(*totals))) : QString();
}

std::int64_t netOf(const ChangeTotals& totals) {
    return totals.net();
}
std::int64_t addedOf(const ChangeTotals& totals) {
    return totals.added;
}
std::int64_t freedOf(const ChangeTotals& totals) {
    return -totals.freed;
}

}  // namespace

ActivityModel::ActivityModel(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), scopes_(model), explorer_(model) {
    const Selection* selection = model.selection();
    for (const auto changed : {&Selection::periodChanged, &Selection::scopeChanged, &Selection::todayChanged})
        connect(selection, changed, this, &ActivityModel::update);
    connect(&model, &AppModel::historyChanged, this, &ActivityModel::update);
    connect(model.settings(), &Settings::showsEstimatesChanged, this, &ActivityModel::update);
    connect(&explorer_, &ExplorerModel::answerChanged, this, &ActivityModel::changesChanged);
    update();
}

PeriodOf ActivityModel::period() const {
    const Selection& selection = *model_.selection();
    return {model_.history(), selection.scope(), selection.firstDay(), selection.day(),
            model_.settings()->showsEstimates()};
}

void ActivityModel::update() {
    const PeriodOf shownPeriod = period();
    range_ = rangeFigures(shownPeriod.history, shownPeriod.scope, shownPeriod.first, shownPeriod.last,
                          model_.calendar());
    Q_EMIT periodChanged();
    Q_EMIT figuresChanged();
    Q_EMIT changesChanged();
}

QString ActivityModel::title() const {
    return periodTitle(period(), model_.calendar());
}

bool ActivityModel::isToday() const {
    return period().isDay() && !hasNextDay();
}

QString ActivityModel::net() const {
    return amount(range_.totals, netOf);
}
QString ActivityModel::netExact() const {
    return exact(range_.totals, netOf);
}
QString ActivityModel::added() const {
    return amount(range_.totals, addedOf);
}
QString ActivityModel::addedExact() const {
    return exact(range_.totals, addedOf);
}
QString ActivityModel::freed() const {
    return amount(range_.totals, freedOf);
}
QString ActivityModel::freedExact() const {
    return exact(range_.totals, freedOf);
}

QString ActivityModel::files() const {
    return range_.totals ? QString::fromStdString(groupedNumber(range_.totals->count)) : QString();
}

QString ActivityModel::coverage() const {
    return coverageSentence(period(), model_.calendar());
}

QString ActivityModel::explanation() const {
    return explorer_.isAnswered() ? QString::fromStdString(explorer_.answer().explanation) : QString();
}

QString ActivityModel::estimated() const {
    const ChangeTotals& totals = explorer_.answer().estimatedTotals;
    if (!explorer_.isAnswered() || totals.count == 0) return {};
    return QString::fromStdString(byteAmount(totals.added));
}

QString ActivityModel::estimatedExact() const {
    return QString::fromStdString(exactByteAmount(explorer_.answer().estimatedTotals.added));
}

}  // namespace brindle
