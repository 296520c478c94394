#pragma once

#include "app/desktop/TrayHost.h"
#include "app/pages/TrayModel.h"

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <chrono>
#include <memory>

namespace brindle {

/// Brindle's item in the desktop's tray, with its menu, for as long as the user wants it and there is a tray.
/// Thread: main.
class TrayItem : public QObject {
    Q_OBJECT

public:
    /// The model outlives it.
    TrayItem(TrayModel& model, const QDBusConnection& sessionBus);

    /// Looks for a tray from now on. One that takes items over the bus is preferred, and found whenever it
    /// comes; one of the older kind is looked for once `patience` is over.
    void begin(std::chrono::milliseconds patience);

    /// Whether the desktop has a tray now.
    [[nodiscard]] bool isAvailable() const;
    /// Whether the user sees the item now.
    [[nodiscard]] bool isShown() const { return icon_ && icon_->isVisible() && isAvailable(); }

Q_SIGNALS:
    /// Once: the item is shown, or it is not although the patience is over.
    void decided();
    /// isAvailable() may be another; not before it is decided.
    void availabilityChanged();

private:
    enum class Kind { bus, x11 };

    QAction* addCommand(void (TrayModel::*perform)());
    void look();
    void refresh();
    void decide();
    [[nodiscard]] QString menuText(QString text) const;

    TrayModel& model_;
    TrayHost host_;
    QTimer patience_;
    bool isPatient_ = true;
    bool isDecided_ = false;
    Kind kind_ = Kind::bus;  // of the item, once it is made
    QMenu menu_;
    QAction* today_;
    QAction* added_;
    QAction* status_;
    QAction* checkNow_;
    QAction* pause_;
    QAction* miniWindow_;
    QAction* checkForUpdates_;
    // Qt decides with the first one of a program which kind of tray it is for, so it is made when that is
    // known. Null until then. Before the menu in the order of going.
    std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace brindle
