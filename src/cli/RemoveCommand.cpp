#include "cli/RemoveCommand.h"

#include "checks/RunLock.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/Translation.h"
#include "platform/Paths.h"

namespace brindle {
namespace {

/// The location at exactly this path. It need not be there now.
LocationRecord includedAt(const std::string& path, HistoryStore& store) {
    const std::string wanted = standardizedPath(path);
    for (LocationRecord& record : store.loadLocations().get())
        if (!record.removedAt && (record.path == wanted || record.scanPath == wanted))
            return std::move(record);
    throw UsageError(filled(translated("“{}” isn't an included location."), fileNameText(wanted)));
}

void tell(const Context& context, const LocationRecord& record, const char* sentence) {
    if (context.asJson)
        context.output.json(record);
    else
        context.output.line(filled(sentence, fileNameText(record.name)));
}

}  // namespace

ExitCode runRemove(const Context& context, const std::string& path) {
    const RunLock lock =
        RunLockSource(context.dataDirectory).take(RunLock::WhenTaken::refuse, CancellationFlag());
    HistoryStore store = context.openHistory();
    LocationRecord record = includedAt(path, store);
    record.removedAt = systemNow();
    record.status = LocationStatus::paused;
    store.remove(record.id, *record.removedAt).get();
    tell(context, record, translated("“{}” is no longer tracked. What was recorded stays in the history."));
    return ExitCode::success;
}

ExitCode runForget(const Context& context, const std::string& path) {
    const RunLock lock =
        RunLockSource(context.dataDirectory).take(RunLock::WhenTaken::refuse, CancellationFlag());
    HistoryStore store = context.openHistory();
    const LocationRecord record = includedAt(path, store);
    if (record.baselineAt)
        throw UsageError(filled(
            translated("“{}” has a history, which is never deleted. To stop tracking it: brindle remove."),
            fileNameText(record.name)));
    store.forget(record.id).get();
    tell(context, record, translated("“{}” is forgotten. Nothing had been recorded for it."));
    return ExitCode::success;
}

}  // namespace brindle
