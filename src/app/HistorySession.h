#pragma once

#include "app/Background.h"
#include "app/CheckActivity.h"
#include "app/Schedule.h"
#include "app/StatementExporter.h"
#include "checks/ScanCoordinator.h"
#include "model/DayClock.h"
#include "model/HistorySource.h"
#include "platform/FileLock.h"
#include "platform/TreeReader.h"
#include "store/HistoryStore.h"

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace brindle {

/// All that the pages show of the user's own history without a list of changes.
struct HistoryFigures {
    HistorySnapshot snapshot;
    std::vector<LocationRecord> records;  // as stored, removed ones included
    std::unordered_map<LocationID, std::vector<UnreadableFolder>> unreadable;  // at the last check
    std::unordered_map<LocationID, std::int64_t> cloudOnlyBytes;
};

/// What a session works with; tests bring their own.
struct SessionParts {
    std::string dataDirectory;
    DayClock clock;
    std::function<std::unique_ptr<const TreeSource>()> trees = [] { return makeTreeSource(); };
};

/// The open history for those who change it on a thread of their own.
struct HistoryAccess {
    std::shared_ptr<HistoryStore> store;
    RunLockSource locks;
    /// Keeps a location out of checks; see ScanCoordinator::leaveOut().
    std::function<Turns::LeftOut(const LocationID&)> leaveOut;
};

/// The user's own history while the program runs: opened, checked and read without the main thread waiting.
/// Thread: main.
class HistorySession : public QObject {
    Q_OBJECT

public:
    explicit HistorySession(SessionParts parts, QObject* parent = nullptr);

    /// Cancels what runs and waits for it; stop() first keeps the main thread from waiting here.
    ~HistorySession() override;

    /// Opens the history, takes the window's lock and reads the figures; ends with opened() and
    /// figuresLoaded(), or with failed(). May be called again after a failure.
    void open(bool estimatesEnabled);
    [[nodiscard]] bool isOpen() const { return history_ != nullptr; }
    [[nodiscard]] bool isOpening() const { return isOpening_; }
    /// Brings what can be read of a damaged history into a new one; ends with recovered() or failed(). Counts
    /// as opening meanwhile, and opens nothing.
    void recover();

    /// Null until it is open.
    [[nodiscard]] const std::shared_ptr<HistorySource>& source() const { return source_; }
    /// The time zone is another one: what is read from here on is read by its days.
    void renewCalendar();
    [[nodiscard]] HistoryStore* store() const;
    /// Nothing until it is open, and while it is being stopped.
    [[nodiscard]] std::optional<HistoryAccess> access() const;
    /// The log of exported files of the open history; its calls do nothing without one.
    [[nodiscard]] ExportRecords exportRecords() const;

    /// Checks every tracked location, or these. Joins the run that is going on.
    void checkAll();
    void checkThese(std::vector<LocationID> locations);
    [[nodiscard]] bool isChecking() const { return runs_ > 0; }
    [[nodiscard]] const std::optional<CheckActivity>& activity() const { return activity_; }
    void cancelCheck();
    /// Looks for the locations without checking them, then reloads the figures.
    void refreshStatuses();
    /// Off deletes the estimates; then the figures are reloaded.
    void setEstimatesEnabled(bool enabled);

    /// Reads the figures; ends with figuresLoaded(), unless another call has overtaken this one.
    void reloadFigures();

    /// Lets the running check end, and the last write. Ends with stopped(); nothing starts any more.
    void stop();

Q_SIGNALS:
    void openingChanged();
    void opened();
    /// The history cannot be opened or recovered; the sentence for the user says why.
    void failed(const QString& sentence, bool isDamaged);
    /// The sentence says where the damaged file is kept.
    void recovered(const QString& sentence);
    /// A check of every location, or of some, begins; joining one that is going on begins none.
    void runBegan(brindle::Schedule::RunOf extent);
    void activityChanged();
    /// The figures follow.
    void runFinished(const brindle::CheckRunSummary& summary);
    void figuresLoaded(const brindle::HistoryFigures& figures);
    /// A read or a change of the history failed.
    void troubled(const QString& sentence);
    void stopped();

private:
    struct Open;

    [[nodiscard]] std::shared_ptr<Open> makeOpen(bool estimatesEnabled);
    [[nodiscard]] std::shared_ptr<HistorySource> sourceOf(const Open& history) const;
    void take(const CoordinatorEvent& event);
    void beginOpening();
    void endOpening();
    void openingFailed(const std::exception& error);
    void run(std::vector<LocationID> locations, Schedule::RunOf extent);
    template <class Work, class Then>
    void whileOpen(Work work, Then then);

    SessionParts parts_;
    Background background_;  // takes the events of the history's checks, and so outlives it
    std::shared_ptr<Open> history_;
    std::shared_ptr<HistorySource> source_;
    int runs_ = 0;  // whose last event is still to come
    std::optional<CheckActivity> activity_;
    bool isOpening_ = false;
    bool isStopping_ = false;
    int figuresAsked_ = 0;
};

}  // namespace brindle

Q_DECLARE_METATYPE(brindle::CheckRunSummary)
Q_DECLARE_METATYPE(brindle::HistoryFigures)
