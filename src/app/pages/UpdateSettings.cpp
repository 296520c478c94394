#include "app/pages/UpdateSettings.h"

#include "app/pages/PageText.h"
#include "model/Translation.h"

namespace brindle {

UpdateSettings::UpdateSettings(UpdateController& updates, QObject* parent)
    : QObject(parent), updates_(updates) {
    connect(&updates, &UpdateController::changed, this, &UpdateSettings::changed);
}

QString UpdateSettings::unavailableText() const {
    const auto reason = updates_.unavailable();
    return reason ? QString::fromStdString(settingsSentence(*reason)) : QString();
}

QString UpdateSettings::note() const {
    return QString::fromStdString(installSentence());
}

bool UpdateSettings::canInstall() const {
    return hasUpdate() && canCheckNow() && !updates_.hasPostponedInstall();
}

QString UpdateSettings::installTitle() const {
    return pageText(translated("Install Brindle {}"), updates_.readyVersion().toStdString());
}

QString UpdateSettings::requestText() const {
    const QString text = translated(
        "While automatic updates are on, Brindle asks its download server once a day for a newer version. "
        "The "
        "request sends the application's name and version. It never sends file names, paths, or your storage "
        "history.");
    return isAvailable() ? text : text + " " + translated("This build makes no such request.");
}

}  // namespace brindle
