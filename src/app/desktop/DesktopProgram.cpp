#include "app/desktop/DesktopProgram.h"

#include <utility>

namespace brindle {

DesktopProgram::DesktopProgram(std::unique_ptr<AppModel> model, SingleInstance& instance,
                               const QDBusConnection& systemBus)
    : model_(std::move(model)), instance_(instance), events_(systemBus) {
    connect(&events_, &SystemEvents::dayChanged, model_.get(), &AppModel::dayOrZoneChanged);
    connect(&events_, &SystemEvents::timeZoneChanged, model_.get(), &AppModel::dayOrZoneChanged);
    connect(&events_, &SystemEvents::becameActive, model_.get(), &AppModel::becameActive);
    connect(&events_, &SystemEvents::didWake, model_.get(), &AppModel::computerWoke);
    connect(&events_, &SystemEvents::mounted, model_.get(), &AppModel::driveMounted);
    connect(&events_, &SystemEvents::unmounted, model_.get(), &AppModel::driveUnmounted);
    connect(&instance_, &SingleInstance::showWindowRequested, this, &DesktopProgram::showWindowRequested);
    connect(&instance_, &SingleInstance::actionRequested, this, &DesktopProgram::perform);
    connect(model_.get(), &AppModel::readyToQuit, this, &DesktopProgram::ended);
}

void DesktopProgram::requestQuit() {
    if (std::exchange(isQuitting_, true)) {
        Q_EMIT ended();
        return;
    }
    // From here on a later start waits for the end of this one and then begins anew.
    instance_.quit();
    Q_EMIT quitBegan();
    model_->shutDown();
}

void DesktopProgram::perform(const QString& action, const QString& activationToken) {
    if (action == "check-now") {
        if (model_->isOpeningHistory())
            connect(&model_->session(), &HistorySession::opened, model_.get(), &AppModel::checkNow,
                    Qt::SingleShotConnection);
        else
            model_->checkNow();
        Q_EMIT showWindowRequested(activationToken);
    }
    if (action == "mini-window") model_->setMiniWindowOpen(true);
    if (action == "quit") requestQuit();
}

}  // namespace brindle
