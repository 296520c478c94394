#include "cli/CheckReport.h"

#include "checks/Obstacle.h"
#include "cli/ChangeTable.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <fmt/format.h>

namespace brindle {
namespace {

constexpr std::size_t largestShown = 10;
constexpr std::size_t unreadableShown = 10;

template <class... Arguments>
std::string counted(const char* one, const char* many, std::int64_t count, const Arguments&... more) {
    return filled(translatedCount(one, many, count), groupedNumber(count), more...);
}

}  // namespace

void CheckReport::add(const LocationRecord& record, const ScanProgress& last, bool isForgotten) {
    const auto commit = std::ranges::find(summary_.committed, record.id, &CheckCommit::locationID);
    if (commit != summary_.committed.end()) return addCommit(record, *commit, last);
    if (const auto obstacle = obstacleText(summary_, record)) {
        const auto unavailable = summary_.unavailable.find(record.id);
        const bool isUnavailable = unavailable != summary_.unavailable.end();
        addFailure(record, isUnavailable ? rawText(unavailable->second).data() : "failed", *obstacle,
                   isForgotten);
    } else {
        addFailure(record, "stopped",
                   filled(translated("Stopped: “{}” wasn't checked, and nothing was recorded for it."),
                          fileNameText(record.name)),
                   isForgotten);
    }
}

ExitCode CheckReport::finish() {
    if (summary_.cancelled && !hasFailure_)
        context_.output.sentence(
            translated("Stopped while earlier history was estimated. The next check goes on with it."));
    if (context_.asJson) context_.output.json({{"locations", locations_}, {"stopped", summary_.cancelled}});
    // While a signal still finds somebody to hear it: what was committed is to be told.
    static_cast<void>(context_.output.flush());
    if (summary_.cancelled) return ExitCode::interrupted;
    return hasFailure_ ? ExitCode::notChecked : ExitCode::success;
}

void CheckReport::addCommit(const LocationRecord& record, const CheckCommit& commit,
                            const ScanProgress& last) {
    const auto largest =
        store_.largestChanges(commit, context_.calendar.day(commit.finishedAt), largestShown).get();
    const auto unreadable = store_.unreadableFolders(record.id).get();
    if (!context_.asJson) return printCommit(record, commit, last, largest, unreadable);
    locations_.push_back({{"id", record.id},
                          {"name", record.name},
                          {"path", record.path},
                          {"outcome", commit.isBaseline ? "baseline" : "check"},
                          {"totals", commit.totals},
                          {"trackedBytes", commit.trackedBytes},
                          {"filesSeen", last.filesSeen},
                          {"seconds", last.elapsed},
                          {"finishedAt", commit.finishedAt},
                          {"largestChanges", largest},
                          {"estimated", estimatedJson(record.id)},
                          {"unreadableFolders", unreadable}});
}

void CheckReport::printCommit(const LocationRecord& record, const CheckCommit& commit,
                              const ScanProgress& last, const std::vector<FileChange>& largest,
                              const std::vector<UnreadableFolder>& unreadable) {
    Output& output = context_.output;
    output.heading(record.name, record.path);
    const std::string seen =
        counted("{0} file, {1}", "{0} files, {1}", last.filesSeen, byteAmount(commit.trackedBytes));
    if (commit.isBaseline) {
        output.line(filled(translated("  Baseline set: {}. From now on, checks record what changes."), seen));
    } else if (commit.totals.count == 0) {
        output.line(filled(translated("  No changes: {}."), seen));
    } else {
        output.line(counted("  {1} added, {2} freed in {0} file. Now {3}.",
                            "  {1} added, {2} freed in {0} files. Now {3}.", commit.totals.count,
                            output.added(commit.totals.added), output.freed(commit.totals.freed), seen));
        Table table(changeColumns);
        for (const FileChange& change : largest) table.add(changeRow(change, nullptr));
        table.print(output);
        const auto more = commit.totals.count - static_cast<std::int64_t>(largest.size());
        if (more > 0)
            output.line(counted("  … and {0} more; see: brindle changes",
                                "  … and {0} more; see: brindle changes", more));
    }
    if (const auto estimated = summary_.estimated.find(record.id);
        estimated != summary_.estimated.end() && estimated->second.files > 0)
        output.line(counted("  Earlier history, estimated from file dates: {1} in {0} file.",
                            "  Earlier history, estimated from file dates: {1} in {0} files.",
                            estimated->second.files, byteAmount(estimated->second.bytes)));
    printUnreadable(unreadable);
}

nlohmann::ordered_json CheckReport::estimatedJson(const LocationID& id) const {
    const auto estimated = summary_.estimated.find(id);
    if (estimated == summary_.estimated.end()) return nullptr;
    return estimated->second;
}

void CheckReport::printUnreadable(const std::vector<UnreadableFolder>& unreadable) {
    if (unreadable.empty()) return;
    Output& output = context_.output;
    const auto count = static_cast<std::int64_t>(unreadable.size());
    output.line(counted("  {} folder couldn't be read; what is in it is kept as it was:",
                        "  {} folders couldn't be read; what is in them is kept as it was:", count));
    for (const UnreadableFolder& folder :
         std::span(unreadable).first(std::min(unreadable.size(), unreadableShown)))
        output.line(fmt::format("    {}  ({})", fileNameText(folder.relativePath),
                                folder.isPermission ? translated("not allowed") : translated("failed")));
    if (const auto more = count - static_cast<std::int64_t>(unreadableShown); more > 0)
        output.line(counted("    … and {} more", "    … and {} more", more));
}

void CheckReport::addFailure(const LocationRecord& record, const char* outcome, const std::string& sentence,
                             bool isForgotten) {
    hasFailure_ = true;
    context_.output.sentence(sentence);
    if (isForgotten)
        context_.output.sentence(
            filled(translated("“{}” isn't included any more."), fileNameText(record.name)));
    locations_.push_back({{"id", record.id},
                          {"name", record.name},
                          {"path", record.path},
                          {"outcome", outcome},
                          {"message", sentence},
                          {"isIncluded", !isForgotten}});
}

}  // namespace brindle
