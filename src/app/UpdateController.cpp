#include "app/UpdateController.h"

#include "model/Translation.h"

#include <utility>

namespace brindle {
namespace {

std::optional<UpdateFeed> feedOf(const SettingValues& information) {
    const QUrl address(QString::fromStdString(information.text("SUFeedURL").value_or("")), QUrl::StrictMode);
    const auto key = UpdateKey::from(information.text("SUPublicEDKey").value_or(""));
    if (!address.isValid() || address.scheme() != u"https" || address.host().isEmpty() || !key) return {};
    return UpdateFeed{address, *key};
}

}  // namespace

UpdateController::UpdateController(bool trackingEnabled, const SettingValues& information,
                                   UpdateServices services, std::function<bool()> isBusy, QObject* parent)
    : QObject(parent), isBusy_(std::move(isBusy)) {
    const auto feed = feedOf(information);
    if (!trackingEnabled) {
        unavailable_ = Unavailable::developmentBuild;
    } else if (!feed) {
        unavailable_ = Unavailable::notConfigured;
    } else {
        const auto postpone = [this](std::function<void()> install) {
            if (!isBusy_()) return false;
            postponedInstall_ = std::move(install);
            return true;
        };
        updater_ = std::make_unique<Updater>(*feed, std::move(services), postpone);
        connect(updater_.get(), &Updater::changed, this, &UpdateController::changed);
        connect(updater_.get(), &Updater::noted, this, &UpdateController::noted);
    }
}

void UpdateController::checkForUpdates() {
    if (updater_) updater_->check();
}

void UpdateController::setChecksAutomatically(bool automatically) {
    if (updater_) updater_->setChecksAutomatically(automatically);
}

QString UpdateController::readyVersion() const {
    const auto version = updater_ ? updater_->readyVersion() : std::nullopt;
    return version ? QString::fromStdString(version->text()) : QString();
}

QString UpdateController::message() const {
    return updater_ ? QString::fromStdString(updater_->message()) : QString();
}

void UpdateController::install() {
    if (updater_) updater_->install();
}

void UpdateController::runPostponedInstall() {
    if (const auto install = std::exchange(postponedInstall_, nullptr)) install();
}

std::string aboutSentence() {
    return translated("Automatic updates aren't available in this build.");
}

std::string installSentence() {
    return translated(
        "An update installs only when you choose it. If a storage check is running, Brindle restarts after "
        "it finishes.");
}

std::string settingsSentence(UpdateController::Unavailable reason) {
    if (reason == UpdateController::Unavailable::developmentBuild)
        return translated("Updates are off in development builds, so they never replace themselves.");
    return translated("Automatic updates aren't set up in this build.");
}

}  // namespace brindle
