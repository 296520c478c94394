// brindle_history_reads DIRECTORY ROUNDS: reads a long history in turn through the store and with a bare loop
// that steps the same statements. Prints a line for each read: its name, the medians of both in seconds of
// processor time, and their ratio. The history (90 days of 20 locations, with a thousand changes a day each
// and one day of 100,000 in one of them) is made in DIRECTORY at the first call. Without rounds it is only
// made.

#include "store/StoredHistory.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fmt/format.h>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace brindle {
namespace {

constexpr int locations = 20;
constexpr int changesOfCheck = 250;
constexpr int checksOfDay = 4;
constexpr int changesOfLargeDay = 100'000;
constexpr UnixTime lastNoon = 1'772'884'800;  // 2026-03-07 12:00 UTC
constexpr LocalDay lastDay{2026, 3, 7};
constexpr double secondsOfDay = 86'400;

std::string filePath(int number) {
    return fmt::format("Documents of the year/Projects {:02}/folder {:05}/some file {:04}.dat", number / 5000,
                       number / 12, number % 12);
}

/// Every file of the location has another size at every check.
Walk scriptedFiles(int count, int check) {
    return [count, check](const EntrySink& sink) {
        ScanReport report{.filesSeen = count};
        std::vector<ScanEntry> batch;
        for (int i = 0; i < count; ++i) {
            batch.push_back({filePath(i), 1000 + (i + check) % 7 * 1000, 0});
            report.totalBytes += batch.back().size;
            if (batch.size() < scanBatchLimit) continue;
            sink(batch);
            batch.clear();
        }
        if (!batch.empty()) sink(batch);
        report.allocatedBytes = report.totalBytes;
        return report;
    };
}

const Calendar& calendar() {
    static const Calendar utc("en_US", "UTC");
    return utc;
}

void check(HistoryStore& store, const LocationID& id, int files, int number, UnixTime at) {
    auto records = store.loadLocations().get();
    const auto record = std::ranges::find(records, id, &LocationRecord::id);
    const auto readVolume = [&] {
        return VolumeReading{.id = record->volumeID,
                             .name = "Disk",
                             .mountPath = "/",
                             .totalBytes = 1'000'000'000'000,
                             .freeBytes = 500'000'000'000,
                             .availableBytes = 500'000'000'000,
                             .readAt = at};
    };
    static_cast<void>(store
                          .commit({.record = *record,
                                   .walk = scriptedFiles(files, number),
                                   .now = [at] { return at; },
                                   .readVolume = readVolume,
                                   .calendar = calendar()})
                          .get());
}

LocationID locationID(int number) {
    return {fmt::format("00000000-0000-4000-8000-{:012}", number)};
}

void make(HistoryStore& store) {
    fmt::print(stderr, "Making a history of {} days ...\n", keptDays);
    for (int i = 0; i < locations; ++i) {
        const std::string path = fmt::format("/home/ann/folder {}", i);
        store
            .insert({.id = locationID(i),
                     .name = path,
                     .path = path,
                     .scanPath = path,
                     .volumeID = fmt::format("volume {}", i % 3),
                     .volumeName = "Disk"})
            .get();
        check(store, locationID(i), changesOfCheck, 0, lastNoon - keptDays * secondsOfDay);
    }
    for (int day = keptDays - 1, number = 1; day >= 0; --day)
        for (int time = 0; time < checksOfDay; ++time, ++number)
            for (int i = 0; i < locations; ++i)
                check(store, locationID(i), changesOfCheck, number,
                      lastNoon - day * secondsOfDay + time * 3600 + i);
    check(store, locationID(0), changesOfLargeDay, 0, lastNoon + 6 * 3600.0);
}

/// Steps a statement to its end and looks at every column, as any reader must.
class BareReader {
public:
    explicit BareReader(const std::string& file) {
        if (sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr) !=
            SQLITE_OK)
            throw std::runtime_error("the history can't be opened");
    }
    ~BareReader() { sqlite3_close(db_); }
    BareReader(const BareReader&) = delete;
    BareReader& operator=(const BareReader&) = delete;

    void read(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db_));
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW)
            for (int i = 0; i < columns; ++i)
                columnsSeen_ += sqlite3_column_type(statement, i) != SQLITE_NULL;
        sqlite3_finalize(statement);
    }

    [[nodiscard]] std::int64_t columnsSeen() const { return columnsSeen_; }

private:
    sqlite3* db_ = nullptr;
    std::int64_t columnsSeen_ = 0;
};

std::vector<std::string> statementsOfSnapshot() {
    const std::string since = calendar().addingDays(lastDay, 1 - keptDays).text();
    return {
        "SELECT id, name, path, scan_path, kind, volume_id, volume_name, case_sensitive, bookmark, added_at, "
        "removed_at, baseline_at, last_check_at, tracked_bytes, status, estimated_at FROM locations "
        "ORDER BY added_at",
        "SELECT d.location_id, d.local_day, d.added, d.freed, d.count FROM locations l CROSS JOIN "
        "daily_totals d ON d.location_id = l.id AND d.local_day >= '" +
            since + "'",
        "SELECT location_id, local_day, MAX(partial) FROM scan_runs WHERE outcome IN ('baseline', 'check') "
        "AND local_day >= '" +
            since + "' GROUP BY location_id, local_day",
        "SELECT location_id, local_day, bytes FROM tracked_totals",
        "WITH RECURSIVE volumes (id) AS (SELECT MIN(volume_id) FROM capacity_samples UNION ALL SELECT "
        "(SELECT MIN(volume_id) FROM capacity_samples WHERE volume_id > id) FROM volumes WHERE id IS NOT "
        "NULL) SELECT c.volume_id, c.name, c.mount_path, c.total, c.free, COALESCE(c.available, c.free), "
        "c.volume_used, c.snapshots, c.is_internal, c.read_at FROM volumes CROSS JOIN capacity_samples c ON "
        "c.volume_id = id AND c.read_at = (SELECT MAX(read_at) FROM capacity_samples WHERE volume_id = id)",
        // As many as are read until every location was met: the last check, and the run of all before it.
        "SELECT location_id, allocated_bytes, trash_bytes FROM scan_runs WHERE outcome IN ('baseline', "
        "'check') ORDER BY id DESC LIMIT " +
            std::to_string(locations + 1),
        "SELECT location_id, local_day, SUM(bytes), SUM(file_count) FROM estimates WHERE local_day >= '" +
            since + "' GROUP BY location_id, local_day"};
}

/// In processor time: the store reads on a thread of its own, which on a busy machine has to wait for its
/// turn. What was read is given back afterwards, as by a page that has shown it.
template <class Body>
double secondsOf(const Body& body) {
    const std::clock_t begin = std::clock();
    [[maybe_unused]] const auto result = body();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

double median(std::vector<double> seconds) {
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::ranges::nth_element(seconds, middle);
    return *middle;
}

template <class Ours, class Bare>
void compare(const char* name, int rounds, const Ours& ours, const Bare& bare) {
    std::vector<double> oursTook;
    std::vector<double> bareTook;
    for (int round = -1; round < rounds; ++round) {
        const double oursNow = secondsOf(ours);
        const double bareNow = secondsOf(bare);
        if (round < 0) continue;  // only warms up
        oursTook.push_back(oursNow);
        bareTook.push_back(bareNow);
    }
    const double a = median(oursTook);
    const double b = median(bareTook);
    fmt::print("{:28} {:9.4f} {:9.4f} {:7.2f}\n", name, a, b, a / b);
}

void measure(const std::shared_ptr<HistoryStore>& store, int rounds) {
    StoredHistory history(
        store, calendar(), [] { return lastNoon; }, keptDays);
    BareReader bare(store->directory() / "History.sqlite");
    const auto statements = statementsOfSnapshot();
    compare(
        "snapshot", rounds, [&] { return history.snapshot().get(); },
        [&] {
            for (const std::string& sql : statements) bare.read(sql);
            return bare.columnsSeen();
        });
    compare(
        "changes of the large day", rounds, [&] { return history.dayChanges(lastDay, {}).get(); },
        [&] {
            bare.read(
                "SELECT id, location_id, folder, name, action, delta, observed_at, source FROM observations "
                "WHERE local_day = '" +
                lastDay.text() + "'");
            return bare.columnsSeen();
        });
    if (bare.columnsSeen() == 0) throw std::runtime_error("the bare loop saw nothing");
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    using namespace brindle;
    if (argc != 3) {
        fmt::print(stderr, "usage: brindle_history_reads DIRECTORY ROUNDS\n");
        return 2;
    }
    const auto store = std::make_shared<HistoryStore>(argv[1]);
    if (store->loadLocations().get().empty()) make(*store);
    if (const int rounds = std::atoi(argv[2]); rounds > 0) measure(store, rounds);
    return 0;
}
