#include "app/pages/TrayModel.h"

#include "app/pages/CommandTitles.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {

TrayModel::TrayModel(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    for (const auto signal : {&AppModel::modeChanged, &AppModel::recordsChanged, &AppModel::ownTodayChanged,
                              &AppModel::checkingChanged, &AppModel::miniWindowChanged})
        connect(&model, signal, this, &TrayModel::changed);
    connect(model.settings(), &Settings::checksPausedChanged, this, &TrayModel::changed);
    connect(model.settings(), &Settings::showsMenuBarItemChanged, this, &TrayModel::changed);
    connect(model.updates(), &UpdateController::changed, this, &TrayModel::changed);
}

QString TrayModel::spokenLabel() const {
    const OwnToday& today = model_.ownToday();
    if (!today.isChecked) return translated("Brindle");
    return pageText(translated("Brindle, today {}"), signedByteAmount(today.totals.net()));
}

QString TrayModel::todayLine() const {
    const OwnToday& today = model_.ownToday();
    if (!today.isChecked) return translated("No check recorded for this date.");
    return pageText(translated("Today: {}"), signedByteAmount(today.totals.net()));
}

QString TrayModel::addedLine() const {
    const OwnToday& today = model_.ownToday();
    return today.isChecked ? pageText(translated("Added {}"), byteAmount(today.totals.added)) : QString();
}

QString TrayModel::statusLine() const {
    if (const auto& activity = model_.checking()) {
        if (activity->isEstimating) return translated("Estimating earlier history…");
        return pageText(translated("Checking {}"), fileNameText(activity->locationName));
    }
    return model_.settings()->checksPaused() ? translated("Checks paused.") : QString();
}

QString TrayModel::pauseTitle() const {
    return brindle::pauseTitle(*model_.settings());
}

QString TrayModel::miniWindowTitle() const {
    return brindle::miniWindowTitle(model_);
}

void TrayModel::checkForUpdates() {
    model_.updates()->checkForUpdates();
    Q_EMIT updatesRequested();
}

void TrayModel::togglePause() {
    model_.settings()->setChecksPaused(!model_.settings()->checksPaused());
}

void TrayModel::toggleMiniWindow() {
    model_.setMiniWindowOpen(!model_.isMiniWindowOpen());
}

}  // namespace brindle
