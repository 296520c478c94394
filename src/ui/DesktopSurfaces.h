#pragma once

#include "app/AppModel.h"
#include "app/StorageWatch.h"
#include "app/desktop/AppearanceWatch.h"
#include "app/desktop/Notices.h"
#include "app/desktop/Reveal.h"
#include "app/pages/TrayModel.h"
#include "ui/tray/MiniWindow.h"
#include "ui/tray/TrayItem.h"
#include "ui/windows/MainWindow.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <chrono>

namespace brindle {

/// Everything of the program that the user sees, and what of it shows when: the main window, the mini window,
/// the tray item and the notices.
/// Thread: main. There is one at a time.
class DesktopSurfaces : public QObject {
    Q_OBJECT

public:
    /// How long a desktop that has just begun may take until its tray is there.
    static constexpr std::chrono::seconds patienceAtLogin{15};

    enum class StartedBy {
        user,     // who is to see the main window
        login,    // the window shows unless the user wants that to be quiet
        request,  // what is to show follows with it
    };

    /// Nothing shows yet. The model outlives it. `folderOpener`: as Reveal has it.
    DesktopSurfaces(AppModel& model, const QDBusConnection& sessionBus,
                    const QString& folderOpener = "xdg-open");
    ~DesktopSurfaces() override;

    /// Shows what the start asks for. At a quiet login that is the tray item only, and the window once there
    /// has been no tray for `patience`. `activationToken`: with which the desktop lets a window come to the
    /// front; may be empty.
    void begin(StartedBy startedBy, const QString& activationToken,
               std::chrono::milliseconds patience = patienceAtLogin);
    /// Not while the program ends.
    void showMainWindow(const QString& activationToken = {});
    /// The program ends. The mini window goes with the model's end.
    void hide() { mainWindow_.hide(); }

    [[nodiscard]] MainWindow& mainWindow() { return mainWindow_; }
    [[nodiscard]] MiniWindow& miniWindow() { return miniWindow_; }
    [[nodiscard]] const TrayItem& trayItem() const { return trayItem_; }

Q_SIGNALS:
    /// The user wants the program to end.
    void quitRequested();

private:
    void mainWindowClosed();

    AppModel& model_;
    Reveal reveal_;
    Notices notices_;
    StorageWatch storage_;
    AppearanceWatch desktop_;
    MainWindow mainWindow_;
    MiniWindow miniWindow_;
    TrayModel trayModel_;
    TrayItem trayItem_;
    bool isWaitingForTray_ = false;
    bool hasToldOfClosing_ = false;
};

}  // namespace brindle
