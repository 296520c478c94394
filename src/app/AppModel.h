#pragma once

#include "app/AppModes.h"
#include "app/Background.h"
#include "app/DayDetails.h"
#include "app/HistorySession.h"
#include "app/LoginItem.h"
#include "app/OwnToday.h"
#include "app/PageLists.h"
#include "app/Schedule.h"
#include "app/Selection.h"
#include "app/Settings.h"
#include "app/StatementExporter.h"
#include "app/UpdateController.h"
#include "settings/LaunchOptions.h"

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace brindle {

/// What the model works with; tests bring their own.
struct AppParts {
    LaunchOptions options;
    Preferences preferences;
    SettingsFile settingsFile;
    SessionParts session;
    std::unique_ptr<Alarm> alarm;
    std::function<Schedule::Moment()> uptime;  // for the schedule
    std::unique_ptr<LoginItemControlling> loginItem;
    /// Makes the updates, which ask whether a check is running.
    std::function<std::unique_ptr<UpdateController>(std::function<bool()> isBusy)> updates;
    /// Makes the example history, on some thread.
    std::function<std::shared_ptr<HistorySource>()> example;
};

/// The one object that every surface reads: what Brindle is doing, what it knows, and what the user looks at.
/// Nothing here waits for the disk: what has to be read arrives with a signal.
/// Thread: main.
class AppModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(brindle::AppMode mode READ mode NOTIFY modeChanged)
    Q_PROPERTY(bool isOpeningHistory READ isOpeningHistory NOTIFY openingChanged)
    Q_PROPERTY(bool isShuttingDown READ isShuttingDown NOTIFY shuttingDownChanged)
    Q_PROPERTY(brindle::HistorySnapshot history READ history NOTIFY historyChanged)
    Q_PROPERTY(brindle::OwnToday ownToday READ ownToday NOTIFY ownTodayChanged)
    Q_PROPERTY(QAbstractListModel* contributors READ contributors CONSTANT)
    Q_PROPERTY(int dayChangesRevision READ dayChangesRevision NOTIFY detailsChanged)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY checkingChanged)
    Q_PROPERTY(QString checkingText READ checkingText NOTIFY checkingChanged)
    Q_PROPERTY(bool isMiniWindowOpen READ isMiniWindowOpen WRITE setMiniWindowOpen NOTIFY miniWindowChanged)
    Q_PROPERTY(brindle::LoginItemStatus loginItemStatus READ loginItemStatus NOTIFY loginItemStatusChanged)
    Q_PROPERTY(brindle::Settings* settings READ settings CONSTANT)
    Q_PROPERTY(brindle::Selection* selection READ selection CONSTANT)
    Q_PROPERTY(brindle::StatementExporter* exporter READ exporter CONSTANT)
    Q_PROPERTY(brindle::UpdateController* updates READ updates CONSTANT)

public:
    explicit AppModel(AppParts parts, QObject* parent = nullptr);
    ~AppModel() override;

    [[nodiscard]] Settings* settings() { return &settings_; }
    [[nodiscard]] Selection* selection() { return &selection_; }
    [[nodiscard]] HistorySession& session() { return session_; }
    [[nodiscard]] StatementExporter* exporter() { return &exporter_; }
    [[nodiscard]] UpdateController* updates() { return updates_.get(); }
    [[nodiscard]] const LaunchOptions& options() const { return options_; }
    [[nodiscard]] UnixTime now() const { return sessionParts_.clock.now(); }
    /// That of the user at this moment: the time zone may change while the program runs.
    [[nodiscard]] Calendar calendar() const { return sessionParts_.clock.calendar(); }

    [[nodiscard]] const AppMode& mode() const { return mode_; }
    /// The first-run screens are to be shown, which nothing but them ends.
    [[nodiscard]] bool isSetupShown() const;
    [[nodiscard]] bool isOpeningHistory() const { return session_.isOpening(); }
    [[nodiscard]] bool isShuttingDown() const { return isShuttingDown_; }

    /// The history that is shown: the user's own or the example.
    [[nodiscard]] const HistorySnapshot& history() const { return history_; }
    [[nodiscard]] std::shared_ptr<HistorySource> source() const;
    [[nodiscard]] const OwnToday& ownToday() const { return ownToday_; }
    [[nodiscard]] const std::vector<LocationRecord>& records() const { return own_.records; }
    /// Of the user's own history, whichever is shown; as they were when it was last read.
    [[nodiscard]] const HistoryFigures& ownFigures() const { return own_; }
    /// What is known beyond the history that is shown; null while that is the example.
    [[nodiscard]] const HistoryFigures* figures() const { return isExampleShown() ? nullptr : &own_; }

    /// Rows for views: the folders that contributed most to the selected range.
    [[nodiscard]] FolderList* contributors() { return contributors_.get(); }

    /// The lists of the selected period. Another list has another revision.
    [[nodiscard]] const Details& details() const { return *details_; }
    [[nodiscard]] std::shared_ptr<const Details> sharedDetails() const { return details_; }
    [[nodiscard]] int dayChangesRevision() const { return dayChangesRevision_; }

    [[nodiscard]] const std::optional<CheckActivity>& checking() const { return session_.activity(); }
    [[nodiscard]] bool isChecking() const { return checking().has_value(); }
    /// What a running check is doing, in one line; empty while none runs.
    [[nodiscard]] QString checkingText() const;
    [[nodiscard]] const std::optional<CheckRunSummary>& lastRun() const { return lastRun_; }

    [[nodiscard]] const LoginItemStatus& loginItemStatus() const { return loginItemStatus_; }
    /// Why the last change of it failed, in a sentence; empty when it did not.
    [[nodiscard]] const QString& loginItemFailure() const { return loginItemFailure_; }
    void setOpensAtLogin(bool opens);
    /// Reads the status anew, which others may have changed.
    void refreshLoginItem();
    void openLoginItemSettings() { loginItem_->openSystemSettings(); }

    /// Once: opens the history, or shows the example where the launch asked for it.
    void start();
    /// Ends the first-run screens: chooses the mode that fits what is stored, which may be theirs again.
    void route();
    /// After `unavailable`: tries to open the history again.
    void retryOpening();
    /// After `unavailable` with a damaged history: brings what can be read into a new one, then opens that.
    void recoverHistory();
    void showExample();
    void showOwnHistory();
    /// Shows the first-run screens, from the example too. What is tracked goes on being checked behind them.
    void showSetup();
    /// Back from them to the pages, which are as they were. Nothing happens where there are none yet.
    void leaveSetup();
    /// Plans a statement of what is selected; see exporter(). Search and direction filters do not count.
    void prepareExport();
    /// Checks every location now, unless nothing is tracked.
    void checkNow();
    /// Whether there is something to check, and nothing that checks it.
    [[nodiscard]] bool canCheckNow() const;
    /// What the running check has found so far is dropped.
    void stopCheck() { session_.cancelCheck(); }
    /// Brings the main window back, from wherever that is asked.
    void openMainWindow() { Q_EMIT mainWindowRequested(); }
    [[nodiscard]] bool isMiniWindowOpen() const { return isMiniWindowOpen_; }
    void setMiniWindowOpen(bool isOpen);
    /// Ends with readyToQuit().
    void shutDown();

    void dayOrZoneChanged();
    void becameActive();
    void computerWoke() { schedule_.computerWoke(); }
    void driveMounted() { schedule_.driveMounted(); }
    void driveUnmounted() { schedule_.driveUnmounted(); }

Q_SIGNALS:
    void modeChanged();
    void setupShownChanged();
    void openingChanged();
    void shuttingDownChanged();
    void historyChanged();
    void ownTodayChanged();
    void recordsChanged();
    void detailsChanged();
    /// What was selected could not be read: the lists are still those before it.
    void detailsFailed();
    void checkingChanged();
    void lastRunChanged();
    /// The figures after a run of checks of the user's own history are there.
    void runTaken();
    void loginItemStatusChanged();
    void mainWindowRequested();
    void miniWindowChanged();
    /// A sentence for the user about something that did not work.
    void noted(const QString& sentence);
    void readyToQuit();

private:
    [[nodiscard]] bool isExampleShown() const { return mode_ == AppMode(PlainMode::example); }
    [[nodiscard]] LocalDay today() const;
    [[nodiscard]] std::vector<LocationID> disconnectedLocations() const;
    void connectParts();
    void setMode(AppMode mode);
    void setWantsSetup(bool wants);
    void chooseMode();
    void returnToOwnHistory();
    void take(const HistoryFigures& figures);
    void settleEstimates();
    void show(HistorySnapshot snapshot);
    void reloadDetails();

    LaunchOptions options_;
    SessionParts sessionParts_;
    Settings settings_;
    Selection selection_;
    std::unique_ptr<LoginItemControlling> loginItem_;
    LoginItemStatus loginItemStatus_;
    QString loginItemFailure_;
    std::function<std::shared_ptr<HistorySource>()> makeExample_;
    std::unique_ptr<Alarm> alarm_;

    AppMode mode_ = PlainMode::starting;
    bool hasStarted_ = false;
    bool isShuttingDown_ = false;
    bool isMiniWindowOpen_ = false;
    bool wantsExample_;
    bool wantsSetup_ = false;  // although there are pages to show
    HistorySnapshot history_;
    HistoryFigures own_;
    OwnToday ownToday_;
    std::shared_ptr<HistorySource> example_;
    std::unique_ptr<FolderList> contributors_ = makeFolderList();
    std::shared_ptr<const Details> details_ = std::make_shared<const Details>();
    int dayChangesRevision_ = 0;
    std::optional<CheckRunSummary> lastRun_;
    bool isRunOver_ = false;  // its figures are still to come
    bool areEstimatesSettled_ = false;

    HistorySession session_;
    Schedule schedule_;
    StatementExporter exporter_;
    std::unique_ptr<UpdateController> updates_;
    DayDetails dayDetails_;
    Background background_;  // last, so that it ends first
};

}  // namespace brindle
