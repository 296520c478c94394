#include "export/StatementExport.h"

#include "export/StatementRows.h"
#include "export/StatementWriter.h"
#include "model/Translation.h"

namespace brindle {
namespace {

constexpr std::int64_t rowsBetweenLooks = 512;

}  // namespace

std::int64_t exportStatement(const ExportPlan& plan, std::unique_ptr<OutputFile> file, HistorySource& source,
                             const HistorySnapshot& snapshot, const Calendar& calendar,
                             const CancellationFlag& cancel, const ExportProgress& progress) {
    StatementWriter writer(std::move(file));
    StatementRows rows(snapshot.locations, plan.isExample, calendar);
    const ChangeSink write = [&](const FileChange& change) {
        if (writer.rowCount() % rowsBetweenLooks == 0) {
            if (cancel.isSet()) throw Cancelled();
            progress(writer.rowCount());
        }
        writer.write(rows.row(change));
    };
    source.streamChanges(plan.first, plan.last, plan.scope, ChangeSource::measured, write);
    if (plan.estimateFiles > 0)
        source.streamChanges(plan.first, plan.last, plan.scope, ChangeSource::estimated, write);
    if (cancel.isSet()) throw Cancelled();
    writer.finish();
    return writer.rowCount();
}

std::string exportFailure(const std::string& description) {
    return filled(translated("The statement couldn't be saved. {}"), description);
}

}  // namespace brindle
