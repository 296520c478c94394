#include "store/ChangeReads.h"

#include "store/FolderTexts.h"
#include "store/LocationFilter.h"

#include <string>

namespace brindle {
namespace {

constexpr const char* columns =
    "SELECT id, location_id, folder, name, action, delta, observed_at, source, "
    "local_day FROM observations ";

/// Reads rows of `columns`.
std::vector<FileChange> read(SQLiteStatement rows) {
    FolderTexts folders;
    std::vector<FileChange> changes;
    while (rows.step())
        changes.push_back({.id = rows.int64(0),
                           .locationID = {rows.text(1)},
                           .folder = folders.components(rows.textView(2)),
                           .name = rows.text(3),
                           .action = changeActionFrom(rows.textView(4)).value_or(ChangeAction::added),
                           .byteDelta = rows.int64(5),
                           .observedAt = rows.real(6),
                           .day = LocalDay::parse(rows.textView(8)).value_or(LocalDay{}),
                           .source = changeSourceFrom(rows.textView(7)).value_or(ChangeSource::measured)});
    return changes;
}

}  // namespace

std::vector<FileChange> changesOn(SQLiteConnection& db, const LocalDay& day,
                                  const std::optional<LocationID>& location) {
    return read(prepareFor(db, location, std::string(columns) + "WHERE local_day = ?", "", day.text()));
}

std::vector<FileChange> changesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                       const std::optional<LocationID>& location) {
    return read(prepareFor(db, location, std::string(columns) + "WHERE local_day BETWEEN ? AND ?",
                           " ORDER BY local_day, observed_at, id", first.text(), last.text()));
}

std::vector<FolderSummary> contributorsBetween(SQLiteConnection& db, const LocalDay& first,
                                               const LocalDay& last,
                                               const std::optional<LocationID>& location) {
    auto rows = prepareFor(db, location,
                           "SELECT location_id, contributor, SUM(CASE WHEN delta > 0 THEN delta ELSE 0 END), "
                           "SUM(CASE WHEN delta < 0 THEN -delta ELSE 0 END), COUNT(*) FROM observations "
                           "WHERE local_day BETWEEN ? AND ?",
                           " GROUP BY location_id, contributor", first.text(), last.text());
    FolderTexts folders;
    std::vector<FolderSummary> summaries;
    while (rows.step())
        summaries.push_back({.ref = {{rows.text(0)}, folders.components(rows.textView(1))},
                             .totals = {rows.int64(2), rows.int64(3), rows.int64(4)}});
    return summaries;
}

std::vector<FileChange> largestChangesOfCheck(SQLiteConnection& db, const LocationID& location,
                                              const LocalDay& day, UnixTime finishedAt, std::size_t limit) {
    auto rows = db.prepare(std::string(columns) +
                           "WHERE local_day = ? AND location_id = ? AND observed_at = ? "
                           "ORDER BY ABS(delta) DESC, id LIMIT ?");
    rows.bind(day.text(), location.rawValue, finishedAt, static_cast<std::int64_t>(limit));
    return read(std::move(rows));
}

}  // namespace brindle
