#include "store/CommitDiff.h"

#include "model/CheckedSum.h"
#include "model/Packages.h"
#include "model/PathSet.h"

#include <string_view>

namespace brindle {
namespace {

/// Whether the path itself or any folder above it is in the set; the empty path is the root, above all.
bool isUnderAny(std::string_view path, const PathSet& folders) {
    if (folders.empty()) return false;
    for (auto slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/', slash + 1))
        if (folders.contains(path.substr(0, slash))) return true;
    return folders.contains(path) || folders.contains(std::string_view());
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

/// Keeps the inventory of one location up to date.
class Inventory {
public:
    Inventory(SQLiteConnection& db, const LocationID& location)
        : location_(location),
          set_(db.prepare("INSERT INTO inventory (location_id, rel_path, size) VALUES (?, ?, ?) "
                          "ON CONFLICT (location_id, rel_path) DO UPDATE SET size = excluded.size")),
          remove_(db.prepare("DELETE FROM inventory WHERE location_id = ? AND rel_path = ?")) {}

    void set(std::string_view path, std::int64_t size) {
        set_.bind(location_.rawValue, path, size);
        set_.finish();
    }
    void remove(std::string_view path) {
        remove_.bind(location_.rawValue, path);
        remove_.finish();
    }

private:
    const LocationID& location_;
    SQLiteStatement set_;
    SQLiteStatement remove_;
};

}  // namespace

RecordedDifferences recordDifferences(SQLiteConnection& db, const DiffContext& context,
                                      const ScanReport& report, Differences& differences) {
    Observations observations(db, context);
    Inventory inventory(db, context.locationID);
    std::int64_t inventoryDelta = 0;

    const PathSet hiddenBefore = previouslyUnreadable(db, context.locationID);
    for (auto rows = differences.seen(); rows.step();) {
        const std::string_view path = rows.textView(0);
        const std::int64_t size = rows.int64(1);
        const auto stored = rows.optionalInt64(2);
        const std::int64_t delta = checkedDifference(size, stored.value_or(0));
        inventory.set(path, size);
        inventoryDelta = checkedSum(inventoryDelta, delta);
        if (stored) observations.write(path, delta > 0 ? ChangeAction::grew : ChangeAction::shrank, delta);
        // A file below a folder that could not be read, or was not counted, before was hidden, not added;
        // empty ones are not news.
        else if (size > 0 && !isUnderAny(path, hiddenBefore))
            observations.write(path, ChangeAction::added, size);
    }

    const PathSet hiddenNow = skippedNow(report);
    const PathSet uncounted(report.uncounted.begin(), report.uncounted.end());
    for (auto rows = differences.unseen(); rows.step();) {
        const std::string_view path = rows.textView(0);
        const std::int64_t size = rows.int64(1);
        // A folder unreadable today keeps its files: they are hidden, not gone. Without this, one lost
        // permission would be recorded as gigabytes freed, and its return as added.
        if (isUnderAny(path, hiddenNow)) continue;
        inventory.remove(path);
        inventoryDelta = checkedDifference(inventoryDelta, size);
        // What is left out of the count from now on, as where the history was moved to, is not gone either.
        if (size > 0 && !isUnderAny(path, uncounted)) observations.write(path, ChangeAction::removed, -size);
    }
    return {.totals = observations.totals(), .inventoryDelta = inventoryDelta};
}

}  // namespace brindle
