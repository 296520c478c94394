#include "store/EstimateReads.h"

#include "store/FolderTexts.h"
#include "store/LocationFilter.h"

namespace brindle {

namespace {

SQLiteStatement rowsBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                            const std::optional<LocationID>& location) {
    return prepareFor(db, location,
                      "SELECT id, location_id, folder, name, bytes, file_count, made_at, local_day "
                      "FROM estimates WHERE local_day BETWEEN ? AND ?",
                      " ORDER BY local_day, bytes DESC, id", first.text(), last.text());
}

FileChange changeOf(const SQLiteStatement& row, FolderTexts& folders) {
    return {.id = row.int64(0),
            .locationID = {row.text(1)},
            .folder = folders.path(row.textView(2)),
            .name = row.text(3),
            .action = ChangeAction::added,
            .byteDelta = row.int64(4),
            .observedAt = row.real(6),
            .day = LocalDay::parse(row.textView(7)).value_or(LocalDay{}),
            .source = ChangeSource::estimated,
            .fileCount = row.int64(5)};
}

}  // namespace

std::vector<FileChange> estimatesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                         const std::optional<LocationID>& location) {
    auto rows = rowsBetween(db, first, last, location);
    FolderTexts folders;
    std::vector<FileChange> changes;
    while (rows.step()) changes.push_back(changeOf(rows, folders));
    return changes;
}

void eachEstimateBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                         const std::optional<LocationID>& location, const ChangeSink& sink) {
    auto rows = rowsBetween(db, first, last, location);
    FolderTexts folders(FolderTexts::fewForAStream);
    while (rows.step()) sink(changeOf(rows, folders));
}

ChangeCount countEstimatesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                  const std::optional<LocationID>& location) {
    auto rows = prepareFor(db, location,
                           "SELECT COUNT(*), SUM(file_count) FROM estimates WHERE local_day BETWEEN ? AND ?",
                           "", first.text(), last.text());
    rows.step();
    return {.rows = rows.int64(0), .files = rows.int64(1)};
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
