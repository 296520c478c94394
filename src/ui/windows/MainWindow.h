#pragma once

#include "app/AppModel.h"
#include "app/Tracking.h"
#include "app/desktop/Reveal.h"
#include "app/pages/AboutModel.h"
#include "app/pages/ActivityModel.h"
#include "app/pages/DrivesModel.h"
#include "app/pages/ExportModel.h"
#include "app/pages/OverviewModel.h"
#include "app/pages/SettingsModel.h"
#include "app/pages/SetupModel.h"
#include "app/pages/StartupChoices.h"
#include "app/pages/StorageHistoryModel.h"
#include "app/pages/TrendsModel.h"
#include "app/pages/WindowModel.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/theme/Appearance.h"
#include "ui/windows/FolderDialog.h"
#include "ui/windows/FrameKeeper.h"
#include "ui/windows/SaveDialog.h"

#include <QObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QString>
#include <memory>

namespace brindle {

/// The main window with the models of its pages, and the settings window beside it. Each is made when it is
/// first shown, and hidden rather than destroyed when it is closed.
/// Thread: main.
class MainWindow : public QObject {
    Q_OBJECT

public:
    /// Both outlive it.
    MainWindow(AppModel& model, Reveal& reveal, QObject* parent = nullptr);
    ~MainWindow() override;

    /// Shows it in front of other windows. `activationToken`: with which the desktop lets a window come to
    /// the front; may be empty.
    void show(const QString& activationToken = {});
    /// The settings window, too.
    void hide();
    void showSettings() { settingsWindow_.show(); }
    /// What became of the updates, in the settings.
    void showUpdates();
    [[nodiscard]] bool isVisible() const { return window_ != nullptr && window_->isVisible(); }
    /// Null before the window was first shown.
    [[nodiscard]] QQuickWindow* window() const { return window_; }
    [[nodiscard]] Appearance& appearance() { return appearance_; }
    [[nodiscard]] StartupChoices& startup() { return startup_; }
    [[nodiscard]] SettingsWindow& settings() { return settingsWindow_; }
    [[nodiscard]] SetupModel& setup() { return setup_; }

Q_SIGNALS:
    /// The user wants the program to end.
    void quitRequested();
    /// The user closed the window.
    void closed();

private:
    void create();

    AppModel& app_;
    Appearance appearance_;
    WindowModel windowModel_;
    OverviewModel overview_;
    ActivityModel activity_;
    StorageHistoryModel storageHistory_;
    TrendsModel trends_;
    Tracking tracking_;
    DrivesModel drives_;
    FolderDialog folderDialog_;
    ExportModel exporter_;
    SaveDialog saveDialog_{exporter_};
    AboutModel about_;
    StartupChoices startup_;
    SettingsModel settingsModel_;
    SettingsWindow settingsWindow_;
    SetupModel setup_;
    FolderDialog setupFolderDialog_;
    std::unique_ptr<QQmlApplicationEngine> engine_;  // goes before the models that its objects show
    QQuickWindow* window_ = nullptr;                 // the engine's
    std::unique_ptr<FrameKeeper> frame_;
};

}  // namespace brindle
