#pragma once

#include "checks/Events.h"
#include "checks/RunLock.h"
#include "checks/Turns.h"
#include "model/Cancellation.h"
#include "model/DayClock.h"
#include "platform/TaskThread.h"
#include "platform/TreeReader.h"
#include "store/HistoryStore.h"

#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace brindle {

/// What to check.
struct RunRequest {
    std::vector<LocationID> locations;  // in this order
    /// What becomes of the run while another program checks the history: it is refused, or waits.
    RunLock::WhenTaken whenTaken = RunLock::WhenTaken::refuse;
    /// Stops the run; ScanCoordinator::cancel() sets it too.
    std::shared_ptr<CancellationFlag> cancellation = std::make_shared<CancellationFlag>();
};

/// Runs the checks of one history, one run at a time, on a thread of its own.
///
/// Events: sent on that thread, one at a time. Of every run, exactly one RunFinished comes, and it comes
/// last;
///         then the run's future is ready. The handler may call everything here, and must not wait for what
///         it gets from it. What it throws is lost, and changes nothing.
/// Errors: none leaves a run: they are in its summary.
/// Thread: any. No call waits for a run, or for the history; a future may be waited for on a worker.
class ScanCoordinator {
public:
    /// The history, its lock and `trees` outlive the coordinator.
    ScanCoordinator(HistoryStore& store, RunLockSource& locks, EventHandler onEvent, bool estimatesEnabled,
                    std::unique_ptr<const TreeSource> trees = makeTreeSource(), DayClock clock = {});

    /// Cancels the run in progress and waits for its end.
    ~ScanCoordinator();
    ScanCoordinator(const ScanCoordinator&) = delete;
    ScanCoordinator& operator=(const ScanCoordinator&) = delete;

    /// Starts a run. While one is in progress it joins that one, whatever it asks for: the future gives the
    /// summary of the run in progress. The history's lock is held for the length of a run.
    std::shared_future<CheckRunSummary> run(RunRequest request);

    /// The run in progress. It is over just before its RunFinished is sent.
    [[nodiscard]] std::optional<std::shared_future<CheckRunSummary>> running() const;

    /// Stops the run in progress: within 512 entries of its walk, and before its next location.
    void cancel();

    /// Keeps a location out of checks for as long as the result lives: its check in progress ends and leaves
    /// nothing, and runs pass it over. The result may outlive the coordinator.
    [[nodiscard]] Turns::LeftOut leaveOut(const LocationID& location) { return turns_.leaveOut(location); }

    /// The next estimating pass, which follows the checks of a run, makes estimates for those of the checked
    /// locations that have none.
    void enableEstimates();

    /// No estimates are made from here on, and those of all locations are deleted. A run that is making some
    /// is cancelled and is over when the future is ready. The future throws SQLiteError.
    std::future<void> disableEstimates();

    /// Looks for every tracked location, between runs, and stores the status of those where it changed. The
    /// future throws SQLiteError.
    std::future<void> refreshStatuses();

private:
    struct Running {
        std::shared_ptr<CancellationFlag> cancellation;
        std::shared_future<CheckRunSummary> summary;
    };

    [[nodiscard]] CheckRunSummary perform(const RunRequest& request);
    [[nodiscard]] CheckRunSummary checkAll(const RunRequest& request);
    [[nodiscard]] bool beginEstimating();
    void send(const CoordinatorEvent& event) const;

    HistoryStore& store_;
    RunLockSource& locks_;
    const EventHandler onEvent_;
    const std::unique_ptr<const TreeSource> trees_;
    const DayClock clock_;

    Turns turns_;
    mutable std::mutex mutex_;  // never held while a handler runs
    std::optional<Running> running_;
    bool estimatesEnabled_;
    bool isEstimating_ = false;

    TaskThread thread_;  // last, so that it ends first
};

}  // namespace brindle
