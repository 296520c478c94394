#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>

namespace brindle {

/// How Brindle begins and where it stays: opening at login, the quiet start, the item in the system tray. The
/// settings and the first run show the same choices, each as a switch with its explanation below. They hold
/// at once.
///
/// There is one of them with the main window, which is told whether the desktop shows a tray.
/// Thread: main.
class StartupChoices : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString loginTitle READ loginTitle CONSTANT)
    Q_PROPERTY(bool opensAtLogin READ opensAtLogin WRITE setOpensAtLogin NOTIFY changed)
    Q_PROPERTY(bool canOpenAtLogin READ canOpenAtLogin NOTIFY changed)
    Q_PROPERTY(QString loginText READ loginText NOTIFY changed)
    Q_PROPERTY(QString loginFailure READ loginFailure NOTIFY changed)
    Q_PROPERTY(QString quietTitle READ quietTitle CONSTANT)
    Q_PROPERTY(bool opensQuietly READ opensQuietly WRITE setOpensQuietly NOTIFY changed)
    Q_PROPERTY(QString quietText READ quietText NOTIFY changed)
    Q_PROPERTY(QString trayTitle READ trayTitle CONSTANT)
    Q_PROPERTY(bool showsTrayItem READ showsTrayItem WRITE setShowsTrayItem NOTIFY changed)
    Q_PROPERTY(QString trayText READ trayText NOTIFY changed)
    Q_PROPERTY(QString closingNote READ closingNote CONSTANT)

public:
    explicit StartupChoices(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] QString loginTitle() const;
    [[nodiscard]] bool opensAtLogin() const;
    void setOpensAtLogin(bool opens);
    /// Whether its switch can be used; loginText() says why not.
    [[nodiscard]] bool canOpenAtLogin() const;
    [[nodiscard]] QString loginText() const;
    /// Why the last change of it failed; empty when it did not.
    [[nodiscard]] QString loginFailure() const { return model_.loginItemFailure(); }

    [[nodiscard]] QString quietTitle() const;
    [[nodiscard]] bool opensQuietly() const { return model_.settings()->opensQuietlyAtLogin(); }
    void setOpensQuietly(bool opensQuietly) { model_.settings()->setOpensQuietlyAtLogin(opensQuietly); }
    [[nodiscard]] QString quietText() const;

    [[nodiscard]] QString trayTitle() const;
    [[nodiscard]] bool showsTrayItem() const { return model_.settings()->showsMenuBarItem(); }
    void setShowsTrayItem(bool shows) { model_.settings()->setShowsMenuBarItem(shows); }
    /// Empty where the desktop shows a tray.
    [[nodiscard]] QString trayText() const;
    [[nodiscard]] QString closingNote() const;

    /// Whether the desktop shows a tray: it does until this says otherwise.
    void setTrayAvailable(bool isAvailable);
    /// Others may have changed the login item: called when a window that shows it becomes active.
    Q_INVOKABLE void refresh() { model_.refreshLoginItem(); }

Q_SIGNALS:
    void changed();

private:
    AppModel& model_;
    bool isTrayAvailable_ = true;
};

}  // namespace brindle
