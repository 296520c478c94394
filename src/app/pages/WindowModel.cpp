#include "app/pages/WindowModel.h"

#include "app/pages/CommandTitles.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {
namespace {

QString text(const std::string& text) {
    return QString::fromStdString(text);
}

}  // namespace

WindowModel::WindowModel(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    connect(&model, &AppModel::modeChanged, this, &WindowModel::screenChanged);
    connect(&model, &AppModel::setupShownChanged, this, &WindowModel::screenChanged);
    connect(&model, &AppModel::modeChanged, this, &WindowModel::statusChanged);
    connect(&model, &AppModel::historyChanged, this, &WindowModel::statusChanged);
    connect(&model, &AppModel::checkingChanged, this, &WindowModel::statusChanged);
    connect(model.settings(), &Settings::checksPausedChanged, this, &WindowModel::statusChanged);
    connect(model.settings(), &Settings::checkIntervalChanged, this, &WindowModel::statusChanged);
    connect(model.selection(), &Selection::destinationChanged, this, &WindowModel::pageChanged);
    connect(model.selection(), &Selection::periodChanged, this, &WindowModel::periodChanged);
    connect(model.selection(), &Selection::todayChanged, this, &WindowModel::periodChanged);
    connect(&model, &AppModel::miniWindowChanged, this, &WindowModel::miniWindowChanged);
    connect(model.updates(), &UpdateController::changed, this, &WindowModel::updatesChanged);
    connect(&model, &AppModel::noted, this, &WindowModel::tell);
    connect(model.exporter(), &StatementExporter::nothingToExport, this, &WindowModel::tell);
}

WindowModel::Screen WindowModel::screen() const {
    if (std::holds_alternative<ModeUnavailable>(model_.mode())) return Unavailable;
    if (model_.mode() == AppMode(PlainMode::starting)) return Starting;
    return model_.isSetupShown() ? FirstRun : Pages;
}

bool WindowModel::canRecover() const {
    const auto* unavailable = std::get_if<ModeUnavailable>(&model_.mode());
    return unavailable != nullptr && unavailable->canRecover;
}

QString WindowModel::unavailableReason() const {
    const auto* unavailable = std::get_if<ModeUnavailable>(&model_.mode());
    return unavailable != nullptr ? text(unavailable->message) : QString();
}

bool WindowModel::isExample() const {
    return model_.mode() == AppMode(PlainMode::example);
}

bool WindowModel::canShowSetup() const {
    return canShowOwnHistory() && hasPages();
}

void WindowModel::setPage(int page) {
    if (page >= 0 && page < pageTitles().size())
        model_.selection()->setDestination(static_cast<Destination>(page));
}

QStringList WindowModel::pageTitles() const {
    return {translated("Overview"), translated("Activity"), translated("Storage history"),
            translated("Trends"), translated("Drives & folders")};
}

QString WindowModel::checkNowTitle() const {
    return isChecking() ? translated("Checking…") : translated("Check Now");
}

QString WindowModel::pauseTitle() const {
    return brindle::pauseTitle(*model_.settings());
}

QString WindowModel::locationCount() const {
    const auto count = static_cast<std::int64_t>(model_.history().currentlyTracked().size());
    return text(filled(translatedCount("{} location included", "{} locations included", count),
                       groupedNumber(count)));
}

QString WindowModel::checkState() const {
    if (isChecking()) return model_.checkingText();
    const auto latest = model_.history().latestCheck({});
    if (!latest) return translated("Not checked yet");
    return text(filled(translated("Last checked {}"), model_.calendar().timeLabel(*latest)));
}

QString WindowModel::schedule() const {
    if (model_.settings()->checksPaused()) return translated("Checks paused.");
    return text(filled(translated("Checks every {} min"), model_.settings()->checkInterval()));
}

void WindowModel::togglePause() {
    model_.settings()->setChecksPaused(!model_.settings()->checksPaused());
}

QString WindowModel::miniWindowTitle() const {
    return brindle::miniWindowTitle(model_);
}

void WindowModel::toggleMiniWindow() {
    model_.setMiniWindowOpen(!model_.isMiniWindowOpen());
}

void WindowModel::searchActivity() {
    model_.selection()->setDestination(Destination::activity);
    model_.selection()->requestSearchFocus();
}

void WindowModel::showToday() {
    model_.selection()->setDay(model_.selection()->today());
}

void WindowModel::showHistoryFolder() {
    Q_EMIT revealRequested(model_.options().dataDirectory);
}

void WindowModel::checkForUpdates() {
    model_.updates()->checkForUpdates();
    Q_EMIT updatesRequested();
}

void WindowModel::revealFailed(const std::string& path) {
    tell(text(filled(translated("“{}” can't be shown: no file manager answers."), fileNameText(path))));
}

void WindowModel::dismissNote() {
    tell({});
}

void WindowModel::tell(const QString& sentence) {
    if (note_ == sentence) return;
    note_ = sentence;
    Q_EMIT noteChanged();
}

}  // namespace brindle
