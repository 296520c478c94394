#include "store/ChangeReads.h"

#include "store/ChangeRuns.h"
#include "store/FolderTexts.h"
#include "store/LocationFilter.h"
#include "store/Transaction.h"

#include <algorithm>
#include <string>

namespace brindle {
namespace {

constexpr const char* changeQuery =
    "SELECT id, location_id, folder, name, action, delta, observed_at, source";

/// Reads a row of `changeQuery` into `change`. Its day is `day`; where that is absent, it is the column
/// behind those.
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

/// The texts of the days that have changes, ascending. Looks one entry of the index up for each.
std::vector<std::string> daysWithChanges(SQLiteConnection& db, const LocalDay& first, const LocalDay& last) {
    auto rows = db.prepare(
        "WITH RECURSIVE days (day) AS (SELECT MIN(local_day) FROM observations WHERE local_day >= ?1 "
        "UNION ALL SELECT (SELECT MIN(local_day) FROM observations WHERE local_day > day) FROM days "
        "WHERE day < ?2) SELECT day FROM days WHERE day <= ?2");
    rows.bind(first.text(), last.text());
    std::vector<std::string> days;
    while (rows.step()) days.push_back(rows.text(0));
    return days;
}

}  // namespace

std::vector<FileChange> changesOn(SQLiteConnection& db, const LocalDay& day,
                                  const std::optional<LocationID>& location) {
    return read(prepareFor(db, location, std::string(changeQuery) + " FROM observations WHERE local_day = ?",
                           "", day.text()),
                day);
}

std::vector<FileChange> changesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                       const std::optional<LocationID>& location) {
    return read(
        prepareFor(db, location,
                   std::string(changeQuery) + ", local_day FROM observations WHERE local_day BETWEEN ? AND ?",
                   " ORDER BY local_day, observed_at, id", first.text(), last.text()),
        std::nullopt);
}

void eachChangeBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                       const std::optional<LocationID>& location, const ChangeSink& sink) {
    FolderTexts folders(FolderTexts::fewForAStream);
    FileChange change;
    const auto handOver = [&](SQLiteStatement& rows, const LocalDay& day) {
        while (rows.step()) {
            readInto(change, rows, folders, day);
            sink(change);
        }
    };
    auto rowsOfRun =
        db.prepare(std::string(changeQuery) + " FROM observations WHERE id BETWEEN ? AND ? ORDER BY id");
    const auto handOverDay = [&](const std::string& text) {
        const LocalDay day = LocalDay::parse(text).value_or(LocalDay{});
        if (const auto runs = changeRunsOf(db, text, location)) {
            for (const ChangeRun& run : *runs) {
                rowsOfRun.bind(run.firstID, run.lastID);
                handOver(rowsOfRun, day);
            }
        } else {
            auto sorted =
                prepareFor(db, location, std::string(changeQuery) + " FROM observations WHERE local_day = ?",
                           " ORDER BY observed_at, id", text);
            handOver(sorted, day);
        }
    };
    // One transaction sees one state of the history, from the first change to the last.
    inTransaction(
        db, [&] { std::ranges::for_each(daysWithChanges(db, first, last), handOverDay); },
        TransactionKind::read);
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
    auto rows = db.prepare(std::string(changeQuery) +
                           " FROM observations WHERE local_day = ? AND location_id = ? AND observed_at = ? "
                           "ORDER BY ABS(delta) DESC, id LIMIT ?");
    rows.bind(day.text(), location.rawValue, finishedAt, static_cast<std::int64_t>(limit));
    return read(std::move(rows), day);
}

}  // namespace brindle
