#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>

namespace brindle {

/// What the tray item says and does. Its figures are those of the user's own history, also while the window
/// shows the example: nobody sees there that they would be made up.
/// Thread: main.
class TrayModel : public QObject {
    Q_OBJECT

public:
    explicit TrayModel(AppModel& model, QObject* parent = nullptr);

    /// Whether the user wants the item.
    [[nodiscard]] bool isWanted() const { return model_.settings()->showsMenuBarItem(); }
    /// The program's name, and today's net change once there is one.
    [[nodiscard]] QString spokenLabel() const;

    [[nodiscard]] QString todayLine() const;
    /// Empty when today has no figures.
    [[nodiscard]] QString addedLine() const;
    /// Empty while there is nothing to say.
    [[nodiscard]] QString statusLine() const;

    [[nodiscard]] bool canCheckNow() const { return model_.canCheckNow(); }
    [[nodiscard]] QString pauseTitle() const;
    [[nodiscard]] QString miniWindowTitle() const;
    [[nodiscard]] bool canCheckForUpdates() const { return model_.updates()->canCheckForUpdates(); }

    void openMainWindow() { model_.openMainWindow(); }
    void checkNow() { model_.checkNow(); }
    void togglePause();
    void toggleMiniWindow();
    void checkForUpdates();
    void quit() { Q_EMIT quitRequested(); }

Q_SIGNALS:
    /// Anything of it.
    void changed();
    /// What becomes of the updates is to be shown.
    void updatesRequested();
    void quitRequested();

private:
    AppModel& model_;
};

}  // namespace brindle
