#include "store/EstimateReads.h"

#include "store/FolderTexts.h"
#include "store/LocationFilter.h"

namespace brindle {

std::vector<FileChange> estimatesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                         const std::optional<LocationID>& location) {
    auto rows = prepareFor(db, location,
                           "SELECT id, location_id, folder, name, bytes, file_count, made_at, local_day "
                           "FROM estimates WHERE local_day BETWEEN ? AND ?",
                           " ORDER BY local_day, bytes DESC, id", first.text(), last.text());
    FolderTexts folders;
    std::vector<FileChange> changes;
    while (rows.step())
        changes.push_back({.id = rows.int64(0),
                           .locationID = {rows.text(1)},
                           .folder = folders.path(rows.textView(2)),
                           .name = rows.text(3),
                           .action = ChangeAction::added,
                           .byteDelta = rows.int64(4),
                           .observedAt = rows.real(6),
                           .day = LocalDay::parse(rows.textView(7)).value_or(LocalDay{}),
                           .source = ChangeSource::estimated,
                           .fileCount = rows.int64(5)});
    return changes;
}

std::vector<EstimatedFolder> estimateContributorsSince(SQLiteConnection& db, const LocalDay& first,
                                                       const std::optional<LocationID>& location) {
    auto rows = prepareFor(db, location,
                           "SELECT location_id, contributor, SUM(bytes), SUM(file_count) FROM estimates "
                           "WHERE local_day >= ?",
                           " GROUP BY location_id, contributor", first.text());
    FolderTexts folders;
    std::vector<EstimatedFolder> estimated;
    while (rows.step())
        estimated.push_back({.ref = {{rows.text(0)}, folders.path(rows.textView(1))},
                             .totals = {rows.int64(2), rows.int64(3)}});
    return estimated;
}

}  // namespace brindle
