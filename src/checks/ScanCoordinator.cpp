#include "checks/ScanCoordinator.h"

#include "checks/CheckRun.h"
#include "checks/Failures.h"
#include "scan/LocationAccess.h"

namespace brindle {

ScanCoordinator::ScanCoordinator(HistoryStore& store, RunLockSource& locks, EventHandler onEvent,
                                 bool estimatesEnabled, std::unique_ptr<const TreeSource> trees,
                                 DayClock clock)
    : store_(store),
      locks_(locks),
      onEvent_(std::move(onEvent)),
      trees_(std::move(trees)),
      clock_(std::move(clock)),
      estimatesEnabled_(estimatesEnabled),
      thread_("Brindle.checks") {}

ScanCoordinator::~ScanCoordinator() {
    cancel();
}

std::shared_future<CheckRunSummary> ScanCoordinator::run(RunRequest request) {
    const std::scoped_lock guard(mutex_);
    if (running_) return running_->summary;
    auto cancellation = request.cancellation;
    auto summary = thread_.perform([this, request = std::move(request)] { return perform(request); }).share();
    running_ = {.cancellation = std::move(cancellation), .summary = summary};
    return summary;
}

std::optional<std::shared_future<CheckRunSummary>> ScanCoordinator::running() const {
    const std::scoped_lock guard(mutex_);
    if (!running_) return {};
    return running_->summary;
}

void ScanCoordinator::cancel() {
    const std::scoped_lock guard(mutex_);
    if (running_) running_->cancellation->set();
}

void ScanCoordinator::enableEstimates() {
    const std::scoped_lock guard(mutex_);
    estimatesEnabled_ = true;
}

std::future<void> ScanCoordinator::disableEstimates() {
    const std::scoped_lock guard(mutex_);
    estimatesEnabled_ = false;
    // On the writer's queue nothing that was handed in before can make estimates: a run that is not yet
    // estimating will find them disabled.
    if (!isEstimating_) return store_.clearEstimates();
    running_->cancellation->set();
    return thread_.perform([this] { store_.clearEstimates().get(); });
}

std::future<void> ScanCoordinator::refreshStatuses() {
    return thread_.perform([this] {
        for (const LocationRecord& record : store_.loadLocations().get()) {
            if (record.removedAt) continue;
            const LocationStatus status = statusOf(resolveAccess(record));
            if (status != record.status) store_.setStatus(record.id, status).get();
        }
    });
}

CheckRunSummary ScanCoordinator::perform(const RunRequest& request) {
    CheckRunSummary summary = checkAll(request);
    {
        const std::scoped_lock guard(mutex_);
        isEstimating_ = false;
        running_.reset();  // a request that the last event brings about starts a run of its own
    }
    send(RunFinished{summary});
    return summary;
}

CheckRunSummary ScanCoordinator::checkAll(const RunRequest& request) {
    const EventHandler sendOn = [this](const CoordinatorEvent& event) { send(event); };
    CheckRun run(store_, *trees_, turns_, request.cancellation, sendOn, clock_);
    try {
        const RunLock lock = locks_.take(request.whenTaken, *request.cancellation);
        run.check(request.locations);
        if (!run.summary().cancelled && beginEstimating()) run.estimate();
        return run.summary();
    } catch (const Cancelled&) {
        return {.cancelled = true};
    } catch (const std::exception& error) {
        return {.refused = failureSentence(error, store_.directory().string())};
    }
}

bool ScanCoordinator::beginEstimating() {
    const std::scoped_lock guard(mutex_);
    isEstimating_ = estimatesEnabled_;
    return isEstimating_;
}

void ScanCoordinator::send(const CoordinatorEvent& event) const {
    try {
        onEvent_(event);
    } catch (...) {  // NOLINT(bugprone-empty-catch): whoever shows a check must not be able to end it
    }
}

}  // namespace brindle
