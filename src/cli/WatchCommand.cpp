#include "cli/WatchCommand.h"

#include "checks/CheckDue.h"
#include "checks/Failures.h"
#include "checks/Maintenance.h"
#include "checks/Obstacle.h"
#include "checks/ScanCoordinator.h"
#include "checks/TrackedLocations.h"
#include "cli/ChangeTable.h"
#include "cli/CheckReport.h"
#include "cli/ValueCoding.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Interruption.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace brindle {
namespace {

/// How often the clock and the settings are looked at. A clock that is set, a computer that wakes and a
/// setting that changes give no sign that would be worth waiting for.
constexpr std::chrono::seconds betweenLooks{20};

/// Ends what goes on when a signal asks for it.
class StopRequest {
public:
    [[nodiscard]] const std::shared_ptr<CancellationFlag>& cancellation() const { return cancellation_; }
    [[nodiscard]] bool isMade() const { return cancellation_->isSet(); }

    void make() {
        cancellation_->set();
        const std::scoped_lock guard(mutex_);
        made_.notify_all();
    }

    void waitFor(std::chrono::seconds time) {
        std::unique_lock guard(mutex_);
        made_.wait_for(guard, time, [this] { return isMade(); });
    }

private:
    std::shared_ptr<CancellationFlag> cancellation_ = std::make_shared<CancellationFlag>();
    std::mutex mutex_;
    std::condition_variable made_;
};

/// Tells of runs, each in a line, and of what keeps a location from being checked when that is news.
class WatchReport {
public:
    explicit WatchReport(const Context& context) : context_(context) {}

    void add(const CheckRunSummary& run, const std::vector<LocationRecord>& locations) {
        if (run.committed.empty() && run.cancelled) return;
        if (run.refused) return tell({}, *run.refused);
        if (locations.empty())
            tell({}, translated("No locations included yet. Include one: brindle include PATH"));
        if (context_.asJson)
            context_.output.jsonLine({{"at", systemNow()},
                                      {"checked", run.committed.size()},
                                      {"locations", locations.size()},
                                      {"totals", totalsOf(run)}});
        else if (!locations.empty())
            context_.output.line(lineFor(run));
        for (const LocationRecord& location : locations)
            if (const auto obstacle = obstacleText(run, location))
                tell(location.id, *obstacle);
            else
                told_.erase(location.id);
        static_cast<void>(context_.output.flush());
    }

    /// Of no location when `id` is that of none.
    void tell(const LocationID& id, const std::string& sentence) {
        std::string& last = told_[id];
        if (last != sentence) context_.output.sentence(sentence);
        last = sentence;
    }

private:
    static ChangeTotals totalsOf(const CheckRunSummary& run) {
        ChangeTotals totals;
        for (const CheckCommit& commit : run.committed) totals += commit.totals;
        return totals;
    }

    [[nodiscard]] std::string lineFor(const CheckRunSummary& run) const {
        const ChangeTotals totals = totalsOf(run);
        const auto count = static_cast<std::int64_t>(run.committed.size());
        const std::string changes =
            totals.count == 0 ? translated("no changes") : totalsText(totals, context_.output);
        return filled(
            translatedCount("{0}: {1} location checked, {2}", "{0}: {1} locations checked, {2}", count),
            context_.calendar.timeLabel(systemNow()), groupedNumber(count), changes);
    }

    const Context& context_;
    std::map<LocationID, std::string> told_;
};

void runOnce(const Context& context, bool areEstimatesOn, const StopRequest& stop, WatchReport& report) {
    HistoryStore store = context.openHistory();
    RunLockSource locks(context.dataDirectory);
    const auto locations = trackedLocations(store);
    RunRequest request{.whenTaken = RunLock::WhenTaken::wait, .cancellation = stop.cancellation()};
    for (const LocationRecord& location : locations) request.locations.push_back(location.id);
    const CheckRunSummary run = ScanCoordinator(
                                    store, locks, [](const CoordinatorEvent&) {}, areEstimatesOn)
                                    .run(std::move(request))
                                    .get();
    report.add(run, locations);
    if (!stop.isMade()) maintain(store);
}

}  // namespace

ExitCode runWatch(const Context& context) {
    std::signal(SIGPIPE, SIG_IGN);
    StopRequest stop;
    const Interruption interruption([&stop] { stop.make(); });
    WatchReport report(context);
    std::optional<UnixTime> lastBegin;
    for (; !stop.isMade(); stop.waitFor(betweenLooks)) {
        const Preferences preferences = context.preferences();
        const UnixTime now = systemNow();
        if (preferences.checksPaused || !isCheckDue(now, lastBegin, preferences.checkInterval)) continue;
        const bool isFirst = !lastBegin;
        lastBegin = now;
        try {
            runOnce(context, preferences.showsEstimates, stop, report);
        } catch (const std::exception& error) {
            // What fails at once would go on failing; what has worked may work again.
            if (isFirst) throw;
            report.tell({}, failureSentence(error, context.dataDirectory));
        }
    }
    return ExitCode::success;
}

}  // namespace brindle
