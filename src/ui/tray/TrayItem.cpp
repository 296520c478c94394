#include "ui/tray/TrayItem.h"

#include "model/Translation.h"
#include "ui/tray/TrayIcon.h"
#include "ui/tray/X11Desktop.h"

#include <utility>

namespace brindle {

TrayItem::TrayItem(TrayModel& model, const QDBusConnection& sessionBus) : model_(model), host_(sessionBus) {
    for (QAction** line : {&today_, &added_, &status_}) {
        *line = menu_.addAction(QString());
        (*line)->setEnabled(false);
    }
    menu_.addSeparator();
    addCommand(&TrayModel::openMainWindow)->setText(translated("Open Brindle"));
    checkNow_ = addCommand(&TrayModel::checkNow);
    checkNow_->setText(translated("Check Now"));
    pause_ = addCommand(&TrayModel::togglePause);
    miniWindow_ = addCommand(&TrayModel::toggleMiniWindow);
    menu_.addSeparator();
    checkForUpdates_ = addCommand(&TrayModel::checkForUpdates);
    checkForUpdates_->setText(translated("Check for Updates…"));
    menu_.addSeparator();
    addCommand(&TrayModel::quit)->setText(translated("Quit Brindle"));

    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, [this] {
        isPatient_ = false;
        look();
        decide();
    });
}

QAction* TrayItem::addCommand(void (TrayModel::*perform)()) {
    QAction* action = menu_.addAction(QString());
    connect(action, &QAction::triggered, &model_, perform);
    return action;
}

void TrayItem::begin(std::chrono::milliseconds patience) {
    connect(&host_, &TrayHost::changed, this, [this] {
        look();
        if (isDecided_) Q_EMIT availabilityChanged();
    });
    connect(&model_, &TrayModel::changed, this, &TrayItem::look);
    patience_.start(patience);
    look();
}

bool TrayItem::isAvailable() const {
    if (!icon_) return host_.isThere() || x11Desktop::hasTray();
    return kind_ == Kind::bus ? host_.isThere() : x11Desktop::hasTray();
}

void TrayItem::look() {
    if (!icon_) {
        const bool isOnBus = host_.isThere();
        if (!model_.isWanted() || !(isOnBus || (!isPatient_ && x11Desktop::hasTray()))) return;
        kind_ = isOnBus ? Kind::bus : Kind::x11;
        icon_ = std::make_unique<QSystemTrayIcon>(trayIcon());
        icon_->setContextMenu(&menu_);
        connect(icon_.get(), &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger) model_.openMainWindow();
                });
    }
    refresh();
    icon_->setVisible(model_.isWanted());
    if (isShown()) decide();
}

void TrayItem::decide() {
    patience_.stop();
    isPatient_ = false;
    if (std::exchange(isDecided_, true)) return;
    Q_EMIT decided();
    Q_EMIT availabilityChanged();
}

void TrayItem::refresh() {
    // The desktop is told of every tooltip anew, also of the same.
    if (const QString label = model_.spokenLabel(); icon_->toolTip() != label) icon_->setToolTip(label);
    for (const auto& [line, text] : {std::pair(today_, model_.todayLine()),
                                     {added_, model_.addedLine()},
                                     {status_, model_.statusLine()}}) {
        line->setText(menuText(text));
        line->setVisible(!text.isEmpty());
    }
    checkNow_->setEnabled(model_.canCheckNow());
    pause_->setText(model_.pauseTitle());
    miniWindow_->setText(model_.miniWindowTitle());
    checkForUpdates_->setEnabled(model_.canCheckForUpdates());
}

/// The text without letters that are taken for keys of the menu.
QString TrayItem::menuText(QString text) const {
    if (kind_ == Kind::x11) return text.replace('&', "&&");
    // Over the bus "_" stands before such a letter. Qt makes one of the first "&", whatever it stands before.
    text.replace('_', "__");
    if (const auto first = text.indexOf('&'); first >= 0) text.insert(first, '&');
    return text;
}

}  // namespace brindle
