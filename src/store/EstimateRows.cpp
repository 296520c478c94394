#include "store/EstimateRows.h"

#include "model/Packages.h"
#include "store/Transaction.h"

#include <exception>
#include <string_view>

namespace brindle {
namespace {

constexpr const char* emptyGroups = "DELETE FROM temp.estimate_groups";

/// Groups on their way from a walk, in a temporary table where parts of a group add up: a large tree has more
/// groups than should be held in memory. The table is empty before and after every walk.
class GroupStaging {
public:
    explicit GroupStaging(SQLiteConnection& db)
        : db_(withEmptyTable(db)),
          insert_(
              db.prepare("INSERT INTO temp.estimate_groups (folder, local_day, name, bytes, file_count) "
                         "VALUES (?, ?, ?, ?, ?) ON CONFLICT (folder, local_day) DO UPDATE SET name = '', "
                         "bytes = bytes + excluded.bytes, file_count = file_count + excluded.file_count")) {}

    ~GroupStaging() {
        try {
            db_.execute(emptyGroups);
        } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): the next walk empties it first
        }
    }
    GroupStaging(const GroupStaging&) = delete;
    GroupStaging& operator=(const GroupStaging&) = delete;

    void add(std::span<const EstimateRow> groups) {
        inTransaction(db_, [&] {
            for (const EstimateRow& group : groups) {
                insert_.bind(group.folder, group.day.text(), group.name, group.totals.bytes,
                             group.totals.files);
                insert_.finish();
                totals_ += group.totals;  // checked: what SQL adds up never exceeds it
            }
        });
    }

    [[nodiscard]] const EstimateTotals& totals() const { return totals_; }

private:
    static SQLiteConnection& withEmptyTable(SQLiteConnection& db) {
        db.execute(
            "CREATE TEMP TABLE IF NOT EXISTS estimate_groups (folder TEXT NOT NULL, local_day TEXT NOT NULL, "
            "name TEXT NOT NULL, bytes INTEGER NOT NULL, file_count INTEGER NOT NULL, "
            "PRIMARY KEY (folder, local_day)) WITHOUT ROWID");
        db.execute(emptyGroups);
        return db;
    }

    SQLiteConnection& db_;
    SQLiteStatement insert_;
    EstimateTotals totals_;
};

/// Writes the rows of one location.
class Estimates {
public:
    Estimates(SQLiteConnection& db, const LocationID& location, UnixTime madeAt)
        : location_(location),
          madeAt_(madeAt),
          insert_(db.prepare("INSERT INTO estimates (location_id, local_day, folder, name, bytes, "
                             "file_count, contributor, made_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?)")) {}

    void write(std::string_view day, std::string_view folder, std::string_view name,
               const EstimateTotals& totals) {
        insert_.bind(location_.rawValue, day, folder, name, totals.bytes, totals.files, contributor(folder),
                     madeAt_);
        insert_.finish();
    }

private:
    const LocationID& location_;
    UnixTime madeAt_;
    SQLiteStatement insert_;
};

void writeGroups(SQLiteConnection& db, Estimates& estimates) {
    auto rows = db.prepare("SELECT local_day, folder, name, bytes, file_count FROM temp.estimate_groups");
    while (rows.step())
        estimates.write(rows.textView(0), rows.textView(1), rows.textView(2),
                        {.bytes = rows.int64(3), .files = rows.int64(4)});
}

}  // namespace

EstimateTotals replaceEstimates(SQLiteConnection& db, const EstimateRequest& request) {
    GroupStaging groups(db);
    const std::vector<EstimateRow> singles =
        request.walk([&groups](std::span<const EstimateRow> part) { groups.add(part); });
    if (request.cancellation && request.cancellation->isSet()) throw Cancelled();

    EstimateTotals totals = groups.totals();
    for (const EstimateRow& file : singles) totals += file.totals;
    const UnixTime madeAt = request.now();
    const std::string& id = request.locationID.rawValue;
    inTransaction(db, [&] {
        db.run("DELETE FROM estimates WHERE location_id = ?", id);
        Estimates estimates(db, request.locationID, madeAt);
        for (const EstimateRow& file : singles)
            estimates.write(file.day.text(), file.folder, file.name, file.totals);
        writeGroups(db, estimates);
        db.run("UPDATE locations SET estimated_at = ? WHERE id = ?", madeAt, id);
    });
    return totals;
}

void clearEstimates(SQLiteConnection& db) {
    inTransaction(db, [&] {
        db.run("DELETE FROM estimates");
        db.run("UPDATE locations SET estimated_at = NULL");
    });
}

}  // namespace brindle
