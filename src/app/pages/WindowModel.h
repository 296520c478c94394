#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace brindle {

/// What the main window shows around its pages: which screen, which page, the status bar and the commands.
/// Thread: main.
class WindowModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)
    Q_PROPERTY(QString unavailableReason READ unavailableReason NOTIFY screenChanged)
    Q_PROPERTY(bool canRecover READ canRecover NOTIFY screenChanged)
    Q_PROPERTY(bool isExample READ isExample NOTIFY screenChanged)
    Q_PROPERTY(bool hasPages READ hasPages NOTIFY screenChanged)
    Q_PROPERTY(bool canShowOwnHistory READ canShowOwnHistory CONSTANT)
    Q_PROPERTY(bool canShowSetup READ canShowSetup NOTIFY screenChanged)
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(QStringList pageTitles READ pageTitles CONSTANT)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY statusChanged)
    Q_PROPERTY(bool canCheckNow READ canCheckNow NOTIFY statusChanged)
    Q_PROPERTY(QString checkNowTitle READ checkNowTitle NOTIFY statusChanged)
    Q_PROPERTY(QString pauseTitle READ pauseTitle NOTIFY statusChanged)
    Q_PROPERTY(QString locationCount READ locationCount NOTIFY statusChanged)
    Q_PROPERTY(QString checkState READ checkState NOTIFY statusChanged)
    Q_PROPERTY(QString schedule READ schedule NOTIFY statusChanged)
    Q_PROPERTY(bool hasNextDay READ hasNextDay NOTIFY periodChanged)
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY updatesChanged)
    Q_PROPERTY(QString miniWindowTitle READ miniWindowTitle NOTIFY miniWindowChanged)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)

public:
    enum Screen { Unavailable, Starting, FirstRun, Pages };
    Q_ENUM(Screen)

    explicit WindowModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] Screen screen() const;
    /// Why the history cannot be used; empty while it can.
    [[nodiscard]] QString unavailableReason() const;
    /// The history is damaged, and what can be read of it can be brought into a new one.
    [[nodiscard]] bool canRecover() const;
    [[nodiscard]] bool isExample() const;
    [[nodiscard]] bool hasPages() const { return screen() == Pages; }
    [[nodiscard]] bool canShowOwnHistory() const { return model_.options().trackingEnabled; }
    /// The first-run screens can be opened; they are not open yet.
    [[nodiscard]] bool canShowSetup() const;

    /// The place of the shown page in pageTitles().
    [[nodiscard]] int page() const { return static_cast<int>(model_.selection()->destination()); }
    void setPage(int page);
    [[nodiscard]] QStringList pageTitles() const;

    [[nodiscard]] bool isChecking() const { return model_.isChecking(); }
    [[nodiscard]] bool canCheckNow() const { return model_.canCheckNow(); }
    [[nodiscard]] QString checkNowTitle() const;
    [[nodiscard]] QString pauseTitle() const;
    [[nodiscard]] QString locationCount() const;
    [[nodiscard]] QString checkState() const;
    [[nodiscard]] QString schedule() const;
    [[nodiscard]] bool hasNextDay() const { return model_.selection()->hasNextDay(); }
    [[nodiscard]] bool canCheckForUpdates() const { return model_.updates()->canCheckForUpdates(); }
    [[nodiscard]] QString miniWindowTitle() const;
    /// Something that did not work, in a sentence, until the user has seen it.
    [[nodiscard]] QString note() const { return note_; }

    Q_INVOKABLE void checkNow() { model_.checkNow(); }
    Q_INVOKABLE void stopCheck() { model_.stopCheck(); }
    Q_INVOKABLE void togglePause();
    Q_INVOKABLE void exportStatement() { model_.prepareExport(); }
    Q_INVOKABLE void searchActivity();
    Q_INVOKABLE void showToday();
    Q_INVOKABLE void moveDay(int days) { model_.selection()->moveDay(days); }
    Q_INVOKABLE void showExample() { model_.showExample(); }
    Q_INVOKABLE void showOwnHistory() { model_.showOwnHistory(); }
    Q_INVOKABLE void showSetup() { model_.showSetup(); }
    Q_INVOKABLE void retryOpening() { model_.retryOpening(); }
    Q_INVOKABLE void recoverHistory() { model_.recoverHistory(); }
    Q_INVOKABLE void showHistoryFolder();
    Q_INVOKABLE void showSettings() { Q_EMIT settingsRequested(); }
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void openMainWindow() { model_.openMainWindow(); }
    Q_INVOKABLE void toggleMiniWindow();
    Q_INVOKABLE void dismissNote();
    /// There is no way to show what revealRequested() asked for.
    void revealFailed(const std::string& path);
    Q_INVOKABLE void quit() { Q_EMIT quitRequested(); }

Q_SIGNALS:
    void screenChanged();
    void pageChanged();
    void statusChanged();
    void periodChanged();
    void updatesChanged();
    void miniWindowChanged();
    void noteChanged();
    /// A folder or file is to be shown in the file manager.
    void revealRequested(const std::string& path);
    void settingsRequested();
    /// What becomes of the updates is to be shown.
    void updatesRequested();
    void quitRequested();

private:
    void tell(const QString& sentence);

    AppModel& model_;
    QString note_;
};

}  // namespace brindle
