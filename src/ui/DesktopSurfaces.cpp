#include "ui/DesktopSurfaces.h"

#include "model/Translation.h"

#include <utility>

namespace brindle {
namespace {

// Where the desktop is there already, its tray is too.
constexpr std::chrono::seconds patienceLater{1};

}  // namespace

DesktopSurfaces::DesktopSurfaces(AppModel& model, const QDBusConnection& sessionBus,
                                 const QString& folderOpener)
    : model_(model),
      reveal_(sessionBus, folderOpener),
      notices_(sessionBus),
      storage_(model),
      desktop_(sessionBus),
      mainWindow_(model, reveal_),
      miniWindow_(model),
      trayModel_(model),
      trayItem_(trayModel_, sessionBus) {
    connect(&desktop_, &AppearanceWatch::appearanceChanged, this,
            [this] { mainWindow_.appearance().setSystem(desktop_.appearance()); });
    connect(&model, &AppModel::mainWindowRequested, this, [this] { showMainWindow(); });
    connect(&notices_, &Notices::chosen, this, &DesktopSurfaces::showMainWindow);
    connect(&storage_, &StorageWatch::noticed, this, [this](const StorageNotice& notice) {
        notices_.show(notice.title, notice.text, [this, notice] { storage_.explain(notice); });
    });
    connect(&mainWindow_, &MainWindow::quitRequested, this, &DesktopSurfaces::quitRequested);
    connect(&mainWindow_, &MainWindow::closed, this, &DesktopSurfaces::mainWindowClosed);
    connect(&trayModel_, &TrayModel::quitRequested, this, &DesktopSurfaces::quitRequested);
    connect(&trayModel_, &TrayModel::updatesRequested, &mainWindow_, &MainWindow::showUpdates);
    connect(&trayItem_, &TrayItem::availabilityChanged, this,
            [this] { mainWindow_.startup().setTrayAvailable(trayItem_.isAvailable()); });
    connect(&trayItem_, &TrayItem::decided, this, [this] {
        if (isWaitingForTray_ && !trayItem_.isShown()) showMainWindow();
        isWaitingForTray_ = false;
    });
}

DesktopSurfaces::~DesktopSurfaces() = default;

void DesktopSurfaces::begin(StartedBy startedBy, const QString& activationToken,
                            std::chrono::milliseconds patience) {
    const Settings& settings = *model_.settings();
    const bool isAtLogin = startedBy == StartedBy::login;
    isWaitingForTray_ = isAtLogin && settings.opensQuietlyAtLogin() && settings.showsMenuBarItem();
    if (!isWaitingForTray_ && startedBy != StartedBy::request) showMainWindow(activationToken);
    trayItem_.begin(isAtLogin ? patience : patienceLater);
}

void DesktopSurfaces::showMainWindow(const QString& activationToken) {
    if (model_.isShuttingDown()) return;
    isWaitingForTray_ = false;
    mainWindow_.show(activationToken);
}

void DesktopSurfaces::mainWindowClosed() {
    if (trayItem_.isShown() || std::exchange(hasToldOfClosing_, true)) return;
    notices_.show(translated("Brindle is still running"),
                  translated("It keeps checking while its window is closed. To see the window again, start "
                             "Brindle again. To stop all checks, quit Brindle there with Ctrl+Q."));
}

}  // namespace brindle
