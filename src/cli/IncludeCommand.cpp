#include "cli/IncludeCommand.h"

#include "checks/LocationChanges.h"
#include "checks/RunLock.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/Translation.h"

namespace brindle {

ExitCode runInclude(const Context& context, const std::vector<std::string>& paths) {
    const RunLock lock =
        RunLockSource(context.dataDirectory).take(RunLock::WhenTaken::refuse, CancellationFlag());
    HistoryStore store = context.openHistory();
    std::vector<LocationRecord> known = store.loadLocations().get();
    std::vector<LocationRecord> added;
    for (const std::string& path : paths) {
        const LocationProposal proposal = proposeLocation(path, known, systemNow());
        if (proposal.isRefused) throw UsageError(proposal.explanation);
        if (!proposal.explanation.empty()) context.output.sentence(proposal.explanation);
        known.push_back(proposal.record);
        added.push_back(proposal.record);
    }
    for (const LocationRecord& record : added) {
        store.insert(record).get();
        if (!context.asJson)
            context.output.line(
                filled(translated("“{}” is included. Its first check sets its starting point."),
                       fileNameText(record.name)));
    }
    if (context.asJson) context.output.json(added);
    return ExitCode::success;
}

}  // namespace brindle
