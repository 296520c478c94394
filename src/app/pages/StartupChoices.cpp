#include "app/pages/StartupChoices.h"

#include "model/PlatformText.h"
#include "model/Translation.h"

#include <variant>

namespace brindle {

StartupChoices::StartupChoices(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    connect(&model, &AppModel::loginItemStatusChanged, this, &StartupChoices::changed);
    connect(model.settings(), &Settings::opensQuietlyAtLoginChanged, this, &StartupChoices::changed);
    connect(model.settings(), &Settings::showsMenuBarItemChanged, this, &StartupChoices::changed);
}

QString StartupChoices::loginTitle() const {
    return translated("Open at login");
}

bool StartupChoices::opensAtLogin() const {
    return model_.loginItemStatus() == LoginItemStatus(PlainLoginItemStatus::enabled);
}

void StartupChoices::setOpensAtLogin(bool opens) {
    model_.setOpensAtLogin(opens);
}

bool StartupChoices::canOpenAtLogin() const {
    return !std::holds_alternative<LoginItemUnavailable>(model_.loginItemStatus());
}

QString StartupChoices::loginText() const {
    const auto* unavailable = std::get_if<LoginItemUnavailable>(&model_.loginItemStatus());
    return unavailable != nullptr ? QString::fromStdString(unavailable->message) : QString();
}

QString StartupChoices::quietTitle() const {
    return translated("Open without the window at login");
}

QString StartupChoices::quietText() const {
    QString text = translated(platformText::quietStart);
    if (isTrayAvailable_) return text;
    return text + " " + translated("This desktop shows none, so the window opens with Brindle.");
}

QString StartupChoices::trayTitle() const {
    return translated(platformText::showInTray);
}

QString StartupChoices::trayText() const {
    if (isTrayAvailable_) return {};
    return translated(
        "This desktop shows no system tray. To see the window again after closing it, open Brindle once "
        "more.");
}

QString StartupChoices::closingNote() const {
    return translated(platformText::closingWindow);
}

void StartupChoices::setTrayAvailable(bool isAvailable) {
    if (isTrayAvailable_ == isAvailable) return;
    isTrayAvailable_ = isAvailable;
    Q_EMIT changed();
}

}  // namespace brindle
