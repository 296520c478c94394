#pragma once

#include "app/AppModel.h"
#include "model/Catalogues.h"
#include "support/TempFolder.h"
#include "ui/DesktopSurfaces.h"

#include <QImage>
#include <QString>
#include <functional>
#include <memory>
#include <string>

namespace brindle {

/// What a stage begins with. Nothing of it is the user's.
struct StageSettings {
    Preferences preferences{.checksPaused = true, .startupSetupCompleted = true};
    bool isExample = true;
    bool hasUpdates = false;  // with a feed that never answers
    /// Fills the data folder before the program opens it.
    std::function<void(const std::string& dataDirectory)> prepare = [](const std::string&) {};
    std::function<std::unique_ptr<const TreeSource>()> trees = [] { return makeTreeSource(); };
    /// Brings up what of the program is to show.
    std::function<void(DesktopSurfaces&)> begin = [](DesktopSurfaces& surfaces) {
        surfaces.showMainWindow();
    };
    QDBusConnection sessionBus{"no bus"};
    UnixTime now = 1'772'884'800;  // 2026-03-07 12:00 UTC
    Calendar calendar{textLanguage() == "en" ? "en_US" : textLanguage(), "UTC"};
};

/// The program's windows with everything behind them, at a time and on a history that the test chooses.
class Stage {
public:
    explicit Stage(StageSettings settings = {});
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    [[nodiscard]] AppModel& model() { return *model_; }
    [[nodiscard]] DesktopSurfaces& surfaces() { return *surfaces_; }
    [[nodiscard]] MainWindow& mainWindow() { return surfaces_->mainWindow(); }
    [[nodiscard]] QQuickWindow& window() { return *mainWindow().window(); }
    [[nodiscard]] TempFolder& folder() { return folder_; }

    /// Lets everything that is under way arrive, and the animations end.
    void settle();
    /// The window as it is drawn.
    [[nodiscard]] QImage picture() { return window().grabWindow(); }
    /// The first item in the window's tree whose accessible name is this; null when there is none.
    [[nodiscard]] QQuickItem* named(const QString& accessibleName);
    /// The same by its objectName.
    [[nodiscard]] QQuickItem* item(const QString& objectName);

private:
    TempFolder folder_;
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<DesktopSurfaces> surfaces_;
};

}  // namespace brindle
