#include "checks/LocationCheck.h"

#include "checks/Failures.h"
#include "model/Translation.h"
#include "platform/Capacity.h"
#include "platform/TreeReader.h"
#include "scan/FolderScanner.h"
#include "scan/LocationAccess.h"
#include "scan/WalkAhead.h"

namespace brindle {
namespace {

/// The status of a location that is not ready.
LocationStatus statusOf(const AccessState& access) {
    return std::holds_alternative<AccessNeeded>(access) ? LocationStatus::needsAccess
                                                        : LocationStatus::disconnected;
}

/// Whether the location is still found where the walk looked for it.
bool isStillThere(const LocationRecord& record, const AccessReady& walked) {
    const AccessState now = resolveAccess(record);
    const auto* ready = std::get_if<AccessReady>(&now);
    return ready != nullptr && ready->scanPath == walked.scanPath;
}

}  // namespace

CheckOutcome LocationCheck::run(const LocationRecord& record,
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

    const ScanRules rules = makeScanRules(ready->scanPath, record.kind == LocationKind::volume, uncounted_);
    const auto walk = [&](const EntrySink& sink) {
        const auto tree = makeTreeSource();
        ScanReport report = FolderScanner(*tree).scan(ready->scanPath, rules, *cancellation, progress, sink);
        // A drive unmounted just before the walk began leaves an empty folder, which the walk takes for the
        // location.
        if (!isStillThere(found, *ready)) throw ScanError(ScanError::Reason::missing);
        return report;
    };
    const auto readVolume = [&] {
        return readCapacity(ready->scanPath, found.volumeID, found.volumeName, systemNow());
    };
    try {
        return store_
            .commit({.record = found,
                     .walk = walkAhead(walk),
                     .cancellation = cancellation,
                     .readVolume = readVolume})
            .get();
    } catch (const Cancelled&) {
        return CheckStopped{};
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
