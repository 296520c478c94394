#include "store/ChangeReads.h"

#include "store/FolderTexts.h"
#include "store/LocationFilter.h"

#include <string>

namespace brindle {
namespace {

constexpr const char* columns = "SELECT id, location_id, folder, name, action, delta, observed_at, source";

/// Reads rows of `columns`. Their day is `day`; where that is absent, it is the column behind those.
std::vector<FileChange> read(SQLiteStatement rows, const std::optional<LocalDay>& day) {
    FolderTexts folders;
    std::vector<FileChange> changes;
    while (rows.step()) {
        FileChange& change = changes.emplace_back();  // in its place: a day may have very many
        change.id = rows.int64(0);
        change.locationID.rawValue = rows.textView(1);
        change.folder = folders.path(rows.textView(2));
        change.name = rows.textView(3);
        change.action = changeActionFrom(rows.textView(4)).value_or(ChangeAction::added);
        change.byteDelta = rows.int64(5);
        change.observedAt = rows.real(6);
        change.day = day ? *day : LocalDay::parse(rows.textView(8)).value_or(LocalDay{});
        change.source = changeSourceFrom(rows.textView(7)).value_or(ChangeSource::measured);
    }
    return changes;
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
    return read(
        prepareFor(db, location,
                   std::string(columns) + ", local_day FROM observations WHERE local_day BETWEEN ? AND ?",
                   " ORDER BY local_day, observed_at, id", first.text(), last.text()),
        std::nullopt);
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
