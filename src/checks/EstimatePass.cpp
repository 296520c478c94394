#include "checks/EstimatePass.h"

#include "checks/TrackedLocations.h"
#include "model/Retention.h"
#include "platform/TreeReader.h"
#include "scan/EstimateWalk.h"
#include "scan/FolderScanner.h"
#include "scan/LocationAccess.h"

namespace brindle {
namespace {

/// The earliest day that is kept through the day before the first check.
EstimateSpan spanOf(const EstimateOrder& order) {
    const Calendar& calendar = order.calendar;
    return {firstKeptDay(calendar, calendar.day(order.now())),
            calendar.addingDays(calendar.day(order.record.baselineAt.value()), -1), calendar};
}

// A drive unmounted just before the walk leaves an empty folder, which would count as no files at all.
void throwUnlessThere(const EstimateOrder& order) {
    const AccessState access = resolveAccess(order.record);
    const auto* ready = std::get_if<AccessReady>(&access);
    if (ready == nullptr || ready->scanPath != order.scanPath) throw ScanError(ScanError::Reason::missing);
}

std::vector<EstimateRow> walk(const EstimateOrder& order, const EstimateGroupSink& sink) {
    const EstimateSpan span = spanOf(order);
    if (span.isEmpty()) return {};
    EstimateGrouper grouper(span, sink);
    const auto trees = makeTreeSource();
    static_cast<void>(FolderScanner(*trees).scan(
        order.scanPath, order.rules, *order.cancellation, [](const ScanProgress&) {},
        [&grouper](std::span<const ScanEntry> batch) { grouper.add(batch); }));
    throwUnlessThere(order);
    return grouper.finish();
}

}  // namespace

EstimateTotals makeEstimates(HistoryStore& store, const EstimateOrder& order) {
    return store
        .replaceEstimates({.locationID = order.record.id,
                           .walk =
                               [&](const EstimateGroupSink& sink) {
                                   // Here, on the writer's thread, it can't be removed any more.
                                   if (!trackedLocation(store, order.record.id))
                                       throw ScanError(ScanError::Reason::missing);
                                   return walk(order, sink);
                               },
                           .cancellation = order.cancellation,
                           .now = order.now})
        .get();
}

}  // namespace brindle
