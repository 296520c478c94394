#include "store/CommitDiff.h"

#include "model/CheckedSum.h"
#include "model/Packages.h"
#include "model/PathSet.h"

#include <string_view>

namespace brindle {
namespace {

/// Whether the path itself or any folder above it is in the set.
bool isUnderAny(std::string_view path, const PathSet& folders) {
    if (folders.empty()) return false;
    for (auto slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/', slash + 1))
        if (folders.contains(path.substr(0, slash))) return true;
    return folders.contains(path);
}

PathSet previouslyUnreadable(SQLiteConnection& db, const LocationID& location) {
    auto rows = db.prepare("SELECT rel_path FROM unreadable_folders WHERE location_id = ?");
    rows.bind(location.rawValue);
    PathSet folders;
    while (rows.step()) folders.insert(rows.text(0));
    return folders;
}

PathSet skippedNow(const ScanReport& report) {
    PathSet folders(report.cloudOnlyFolders.begin(), report.cloudOnlyFolders.end());
    for (const UnreadableFolder& folder : report.unreadable) folders.insert(folder.relativePath);
    return folders;
}

/// Writes observations and sums them.
class Observations {
public:
    Observations(SQLiteConnection& db, const DiffContext& context)
        : context_(context),
          insert_(
              db.prepare("INSERT INTO observations (location_id, folder, name, action, delta, observed_at, "
                         "local_day, source, contributor, scan_id) "
                         "VALUES (?, ?, ?, ?, ?, ?, ?, 'measured', ?, ?)")) {}

    void write(std::string_view path, ChangeAction action, std::int64_t delta) {
        const auto slash = path.rfind('/');
        const bool isInRoot = slash == std::string_view::npos;
        const std::string_view folder = isInRoot ? std::string_view() : path.substr(0, slash);
        const std::string_view name = isInRoot ? path : path.substr(slash + 1);
        insert_.bind(context_.locationID.rawValue, folder, name, rawText(action), delta, context_.finishedAt,
                     context_.day, contributor(folder), context_.scanID);
        insert_.finish();
        totals_.add(delta, 1);
    }

    [[nodiscard]] const ChangeTotals& totals() const { return totals_; }

private:
    const DiffContext& context_;
    SQLiteStatement insert_;
    ChangeTotals totals_;
};

void observeNewAndChanged(SQLiteConnection& db, const DiffContext& context, Observations& observations) {
    const PathSet hiddenBefore = previouslyUnreadable(db, context.locationID);
    auto rows = db.prepare(
        "SELECT s.rel_path, s.size, i.size FROM temp.staging s "
        "LEFT JOIN inventory i ON i.location_id = ?1 AND i.rel_path = s.rel_path "
        "WHERE i.rel_path IS NULL OR i.size != s.size");
    rows.bind(context.locationID.rawValue);
    while (rows.step()) {
        const std::string_view path = rows.textView(0);
        const std::int64_t size = rows.int64(1);
        if (const auto stored = rows.optionalInt64(2)) {
            const std::int64_t delta = checkedDifference(size, *stored);
            observations.write(path, delta > 0 ? ChangeAction::grew : ChangeAction::shrank, delta);
            continue;
        }
        // A file below a folder that could not be read before was hidden, not added.
        if (size < 1 || isUnderAny(path, hiddenBefore)) continue;
        observations.write(path, ChangeAction::added, size);
    }
}

void observeRemoved(SQLiteConnection& db, const DiffContext& context, const ScanReport& report,
                    Observations& observations) {
    const PathSet hiddenNow = skippedNow(report);
    auto remember = db.prepare("INSERT OR IGNORE INTO temp.removed (rel_path) VALUES (?)");
    auto rows = db.prepare(
        "SELECT i.rel_path, i.size FROM inventory i WHERE i.location_id = ?1 "
        "AND NOT EXISTS (SELECT 1 FROM temp.staging s WHERE s.rel_path = i.rel_path)");
    rows.bind(context.locationID.rawValue);
    while (rows.step()) {
        const std::string_view path = rows.textView(0);
        const std::int64_t size = rows.int64(1);
        // A folder unreadable today keeps its files: they are hidden, not gone. Without this, one lost
        // permission would be recorded as gigabytes freed, and its return as added.
        if (isUnderAny(path, hiddenNow)) continue;
        remember.bind(path);
        remember.finish();
        if (size > 0) observations.write(path, ChangeAction::removed, -size);
    }
}

void applyToInventory(SQLiteConnection& db, const LocationID& location) {
    db.run(
        "INSERT INTO inventory (location_id, rel_path, size) "
        "SELECT ?1, s.rel_path, s.size FROM temp.staging s "
        "LEFT JOIN inventory i ON i.location_id = ?1 AND i.rel_path = s.rel_path "
        "WHERE i.rel_path IS NULL OR i.size != s.size "
        "ON CONFLICT (location_id, rel_path) DO UPDATE SET size = excluded.size",
        location.rawValue);
    db.run("DELETE FROM inventory WHERE location_id = ?1 AND rel_path IN (SELECT rel_path FROM temp.removed)",
           location.rawValue);
}

}  // namespace

ChangeTotals recordDifferences(SQLiteConnection& db, const DiffContext& context, const ScanReport& report) {
    Observations observations(db, context);
    observeNewAndChanged(db, context, observations);
    observeRemoved(db, context, report, observations);
    applyToInventory(db, context.locationID);
    return observations.totals();
}

}  // namespace brindle
