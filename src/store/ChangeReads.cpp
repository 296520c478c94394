#include "store/ChangeReads.h"

#include "store/FolderTexts.h"
#include "store/LocationFilter.h"

#include <string>

namespace brindle {
namespace {

constexpr const char* columns = "SELECT id, location_id, folder, name, action, delta, observed_at, source";

/// Reads a row of `columns` into `change`. Its day is `day`; where that is absent, it is the column behind
/// those.
void readInto(FileChange& change, const SQLiteStatement& row, FolderTexts& folders,
              const std::optional<LocalDay>& day) {
    change.id = row.int64(0);
    change.locationID.rawValue = row.textView(1);
    change.folder = folders.path(row.textView(2));
    change.name = row.textView(3);
    change.action = changeActionFrom(row.textView(4)).value_or(ChangeAction::added);
    change.byteDelta = row.int64(5);
    change.observedAt = row.real(6);
    change.day = day ? *day : LocalDay::parse(row.textView(8)).value_or(LocalDay{});
    change.source = changeSourceFrom(row.textView(7)).value_or(ChangeSource::measured);
}

std::vector<FileChange> read(SQLiteStatement rows, const std::optional<LocalDay>& day) {
    FolderTexts folders;
    std::vector<FileChange> changes;
    while (rows.step())  // in its place: a day may have very many
        readInto(changes.emplace_back(), rows, folders, day);
    return changes;
}

SQLiteStatement rowsBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                            const std::optional<LocationID>& location) {
    return prepareFor(db, location,
                      std::string(columns) + ", local_day FROM observations WHERE local_day BETWEEN ? AND ?",
                      " ORDER BY local_day, observed_at, id", first.text(), last.text());
}

}  // namespace

std::vector<FileChange> changesOn(SQLiteConnection& db, const LocalDay& day,
                                  const std::optional<LocationID>& location) {
    return read(prepareFor(db, location, std::string(columns) + " FROM observations WHERE local_day = ?", "",
                           day.text()),
                day);
}

std::vector<FileChange> changesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                       const std::optional<LocationID>& location) {
    return read(rowsBetween(db, first, last, location), std::nullopt);
}

void eachChangeBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                       const std::optional<LocationID>& location, const ChangeSink& sink) {
    auto rows = rowsBetween(db, first, last, location);
    FolderTexts folders(FolderTexts::fewForAStream);
    FileChange change;
    while (rows.step()) {
        readInto(change, rows, folders, std::nullopt);
        sink(change);
    }
}

ChangeCount countChangesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                const std::optional<LocationID>& location) {
    auto rows = prepareFor(db, location, "SELECT COUNT(*) FROM observations WHERE local_day BETWEEN ? AND ?",
                           "", first.text(), last.text());
    rows.step();
    return {.rows = rows.int64(0), .files = rows.int64(0)};
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
        summaries.push_back({.ref = {{rows.text(0)}, folders.path(rows.textView(1))},
                             .totals = {rows.int64(2), rows.int64(3), rows.int64(4)}});
    return summaries;
}

std::vector<FileChange> largestChangesOfCheck(SQLiteConnection& db, const LocationID& location,
                                              const LocalDay& day, UnixTime finishedAt, std::size_t limit) {
    auto rows = db.prepare(std::string(columns) +
                           " FROM observations WHERE local_day = ? AND location_id = ? AND observed_at = ? "
                           "ORDER BY ABS(delta) DESC, id LIMIT ?");
    rows.bind(day.text(), location.rawValue, finishedAt, static_cast<std::int64_t>(limit));
    return read(std::move(rows), day);
}

}  // namespace brindle
