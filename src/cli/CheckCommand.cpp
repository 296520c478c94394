#include "cli/CheckCommand.h"

#include "checks/Maintenance.h"
#include "checks/RunLock.h"
#include "checks/ScanCoordinator.h"
#include "cli/CheckReport.h"
#include "model/Translation.h"
#include "platform/Interruption.h"
#include "platform/Paths.h"
#include "scan/LocationAccess.h"

#include <algorithm>
#include <csignal>
#include <map>
#include <memory>
#include <stdexcept>

namespace brindle {
namespace {

bool isIncluded(const LocationRecord& record) {
    return !record.removedAt;
}

/// The locations of one run, and which of them it included itself.
class ChosenLocations {
public:
    /// Changes nothing yet. Throws: LocationChoiceError, UsageError.
    ChosenLocations(HistoryStore& store, const std::vector<std::string>& folders, Output& output)
        : store_(store) {
        for (LocationRecord& record : store.loadLocations().get())
            if (isIncluded(record)) included_.push_back(std::move(record));
        if (folders.empty()) {
            toCheck_ = included_;
            return;
        }
        for (const std::string& folder : folders) choose(folder, output);
    }

    ~ChosenLocations() {
        for (const LocationID& id : unchecked_) store_.forget(id).wait();
    }
    ChosenLocations(const ChosenLocations&) = delete;
    ChosenLocations& operator=(const ChosenLocations&) = delete;

    /// Stores those that are new, once every folder is known to be a good one.
    void include() {
        for (const LocationRecord& record : added_) {
            unchecked_.push_back(record.id);
            store_.insert(record).get();
        }
    }

    [[nodiscard]] const std::vector<LocationRecord>& toCheck() const { return toCheck_; }
    [[nodiscard]] std::vector<LocationID> idsToCheck() const {
        std::vector<LocationID> ids;
        for (const LocationRecord& record : toCheck_) ids.push_back(record.id);
        return ids;
    }

    void keep(const LocationID& id) { std::erase(unchecked_, id); }

    /// Whether the location goes again, because this run included it and did not check it.
    [[nodiscard]] bool isForgotten(const LocationID& id) const {
        return std::ranges::find(unchecked_, id) != unchecked_.end();
    }

private:
    void choose(const std::string& folder, Output& output) {
        // A location is known by its path, though nothing may be there now.
        const std::string path = standardizedPath(folder);
        const auto known = std::ranges::find(included_, path, &LocationRecord::path);
        if (known != included_.end()) return checkToo(*known);

        const LocationCandidate candidate = makeFolderOrDriveCandidate(folder, included_, systemNow());
        const auto& overlap = candidate.overlap;
        if (overlap.kind == LocationOverlap::Kind::same)
            return checkToo(*std::ranges::find(included_, overlap.locations.front(), &LocationRecord::id));
        const auto explanation = overlapText(overlap, candidate.record, included_);
        if (overlap.kind == LocationOverlap::Kind::inside) throw UsageError(*explanation);
        if (explanation) output.sentence(*explanation);
        included_.push_back(candidate.record);
        toCheck_.push_back(candidate.record);
        added_.push_back(candidate.record);
    }

    void checkToo(const LocationRecord& record) {
        if (std::ranges::find(toCheck_, record.id, &LocationRecord::id) == toCheck_.end())
            toCheck_.push_back(record);
    }

    HistoryStore& store_;
    std::vector<LocationRecord> included_;
    std::vector<LocationRecord> toCheck_;
    std::vector<LocationRecord> added_;
    std::vector<LocationID> unchecked_;
};

/// Shows the progress of a run, and keeps its last word on every location. Both outlive the run.
EventHandler progressTo(Output& output, std::map<LocationID, ScanProgress>& last) {
    return [&](const CoordinatorEvent& event) {
        if (const auto* word = std::get_if<LocationProgress>(&event)) {
            last[word->location] = word->progress;
            output.progress(word->name, word->progress);
        } else if (const auto* estimating = std::get_if<LocationEstimating>(&event)) {
            output.estimating(estimating->name);
        }
    };
}

}  // namespace

ExitCode runCheck(const Context& context, const CheckOptions& options) {
    // A reader that goes away must not take the check with it.
    std::signal(SIGPIPE, SIG_IGN);
    const auto cancellation = std::make_shared<CancellationFlag>();
    const Interruption interruption([cancellation] { cancellation->set(); });

    RunLockSource locks(context.dataDirectory);
    const RunLock lock =
        locks.take(options.wait ? RunLock::WhenTaken::wait : RunLock::WhenTaken::refuse, *cancellation);
    HistoryStore store = context.openHistory();
    ChosenLocations chosen(store, options.folders, context.output);
    chosen.include();
    if (chosen.toCheck().empty())
        throw UsageError(translated("No locations included yet. Name a folder to include and check it."));

    std::map<LocationID, ScanProgress> last;
    const bool areEstimatesOn = context.preferences().showsEstimates;
    const CheckRunSummary summary =
        ScanCoordinator(store, locks, progressTo(context.output, last), areEstimatesOn)
            .run({.locations = chosen.idsToCheck(), .cancellation = cancellation})
            .get();
    if (summary.refused) throw std::runtime_error(*summary.refused);
    for (const CheckCommit& commit : summary.committed) chosen.keep(commit.locationID);
    CheckReport report(context, store, summary);
    for (const LocationRecord& record : chosen.toCheck())
        report.add(record, last[record.id], chosen.isForgotten(record.id));
    if (!cancellation->isSet()) maintain(store);
    return report.finish();
}

}  // namespace brindle
