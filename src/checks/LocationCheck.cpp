#include "checks/LocationCheck.h"

#include "checks/Failures.h"
#include "checks/TrackedLocations.h"
#include "model/Translation.h"
#include "platform/Capacity.h"
#include "scan/FolderScanner.h"
#include "scan/WalkAhead.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace brindle {
namespace {

constexpr std::chrono::milliseconds betweenWords{100};

/// The walk's latest word on its progress, on its way to the thread that waits for the check.
class LatestProgress {
public:
    void put(const ScanProgress& progress) {
        const std::scoped_lock guard(mutex_);
        latest_ = progress;
    }
    [[nodiscard]] std::optional<ScanProgress> take() {
        const std::scoped_lock guard(mutex_);
        return std::exchange(latest_, std::nullopt);
    }

private:
    std::mutex mutex_;
    std::optional<ScanProgress> latest_;
};

/// Whether the location is still found where the walk looked for it.
bool isStillThere(const LocationRecord& record, const AccessReady& walked) {
    const AccessState now = resolveAccess(record);
    const auto* ready = std::get_if<AccessReady>(&now);
    return ready != nullptr && ready->scanPath == walked.scanPath;
}

}  // namespace

LocationStatus statusOf(const AccessState& access) {
    if (std::holds_alternative<AccessReady>(access)) return LocationStatus::active;
    return std::holds_alternative<AccessNeeded>(access) ? LocationStatus::needsAccess
                                                        : LocationStatus::disconnected;
}

CheckOutcome LocationCheck::run(const LocationRecord& record,
                                const std::shared_ptr<const CancellationFlag>& cancellation,
                                const ProgressSink& progress) {
    CheckOutcome outcome = check(record, cancellation, progress);
    const bool isOver =
        std::holds_alternative<LocationUnavailable>(outcome) || std::holds_alternative<CheckFailed>(outcome);
    if (isOver && !trackedLocation(store_, record.id)) return NoLongerTracked{};
    return outcome;
}

CheckOutcome LocationCheck::check(const LocationRecord& record,
                                  const std::shared_ptr<const CancellationFlag>& cancellation,
                                  const ProgressSink& progress) {
    const AccessState access = resolveAccess(record);
    const auto* ready = std::get_if<AccessReady>(&access);
    if (ready == nullptr) return unavailable(record, statusOf(access));

    LocationRecord found = record;
    if (ready->refreshedBookmark) {
        found.path = ready->path;
        found.scanPath = ready->scanPath;
        found.bookmark = ready->refreshedBookmark;
        store_.updateAccess(found.id, found.path, found.scanPath, found.bookmark).get();
    }

    ScanRules rules;
    LatestProgress latest;
    const auto walk = [&](const EntrySink& sink) {
        rules = makeScanRules(ready->scanPath, record.kind == LocationKind::volume, uncounted_());
        const auto hear = [&](const ScanProgress& word) { latest.put(word); };
        ScanReport report = FolderScanner(trees_).scan(ready->scanPath, rules, *cancellation, hear, sink);
        // A drive unmounted just before the walk began leaves an empty folder, which the walk takes for the
        // location.
        if (!isStillThere(found, *ready)) throw ScanError(ScanError::Reason::missing);
        return report;
    };
    const auto readVolume = [&] {
        return readCapacity(ready->scanPath, found.volumeID, found.volumeName, clock_.now());
    };
    auto committed = store_.commit({.record = found,
                                    .walk = walkAhead(walk),
                                    .cancellation = cancellation,
                                    .now = clock_.now,
                                    .readVolume = readVolume,
                                    .calendar = clock_.calendar()});
    try {
        while (committed.wait_for(betweenWords) != std::future_status::ready)
            if (const auto word = latest.take()) progress(*word);
    } catch (...) {
        committed.wait();  // the walk uses what is here
        throw;
    }
    if (const auto word = latest.take()) progress(*word);
    try {
        return LocationChecked{
            .commit = committed.get(), .scanPath = ready->scanPath, .rules = std::move(rules)};
    } catch (const Cancelled&) {
        return CheckStopped{};
    } catch (const LocationGone&) {
        return NoLongerTracked{};
    } catch (const ScanError& error) {
        if (error.reason == ScanError::Reason::accessDenied)
            return unavailable(found, LocationStatus::needsAccess);
        const AccessState now = resolveAccess(found);
        if (!std::holds_alternative<AccessReady>(now)) return unavailable(found, statusOf(now));
        return CheckFailed{translated("The folder changed during the check. It will be checked again.")};
    } catch (const std::exception& error) {
        return CheckFailed{failureSentence(error, store_.directory().string())};
    }
}

CheckOutcome LocationCheck::unavailable(const LocationRecord& record, LocationStatus status) {
    store_.setStatus(record.id, status).get();
    return LocationUnavailable{status};
}

}  // namespace brindle
