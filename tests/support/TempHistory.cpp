#include "support/TempHistory.h"

#include "store/SQLiteConnection.h"

#include <sqlite3.h>
#include <stdexcept>

namespace brindle {

const std::shared_ptr<HistoryStore>& TempHistory::sharedStore() {
    if (!store_) store_ = std::make_shared<HistoryStore>(directory(), [this] { return now; });
    return store_;
}

LocationRecord TempHistory::include(const std::string& id) {
    store()
        .insert({.id = {id},
                 .name = id,
                 .path = "/" + id,
                 .scanPath = "/" + id,
                 .volumeID = "volume",
                 .volumeName = "Volume",
                 .addedAt = now})
        .get();
    return record(id);
}

LocationRecord TempHistory::record(const std::string& id) {
    for (const LocationRecord& record : store().loadLocations().get())
        if (record.id.rawValue == id) return record;
    throw std::runtime_error("there is no location " + id);
}

CheckRequest TempHistory::request(const std::string& id, Walk walk) {
    return {
        .record = record(id), .walk = std::move(walk), .now = [this] { return now; }, .calendar = calendar};
}

CheckCommit TempHistory::check(const std::string& id, const Files& files, ScanReport report) {
    return store().commit(request(id, scriptedWalk(files, std::move(report)))).get();
}

std::vector<std::string> TempHistory::rows(const std::string& sql) const {
    return rowsOf(file(), sql);
}

namespace {

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Database opened(const std::string& file) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    Database db(handle, sqlite3_close);
    if (code != SQLITE_OK) throw std::runtime_error(file + " can't be opened");
    // A program that opens the history or closes it has the file to itself for a moment.
    sqlite3_busy_timeout(handle, static_cast<int>(SQLiteConnection::usualPatience.count()));
    return db;
}

std::vector<std::string> rowsOf(sqlite3* db, const std::string& sql) {
    std::vector<std::string> rows;
    const auto keepRow = [](void* result, int columns, char** texts, char**) {
        std::string row;
        for (int i = 0; i < columns; ++i)
            row += (i > 0 ? "|" : "") + std::string(texts[i] ? texts[i] : "NULL");
        static_cast<std::vector<std::string>*>(result)->push_back(std::move(row));
        return 0;
    };
    if (sqlite3_exec(db, sql.c_str(), keepRow, &rows, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(db));
    return rows;
}

}  // namespace

std::vector<std::string> everythingIn(const std::string& file) {
    const Database db = opened(file);
    std::vector<std::string> all;
    for (const std::string& table : rowsOf(db.get(),
                                           "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT "
                                           "LIKE 'sqlite_%' ORDER BY name"))
        for (const std::string& row : rowsOf(db.get(), "SELECT * FROM " + table + " ORDER BY 1, 2"))
            all.push_back(table + ": " + row);
    return all;
}

std::vector<std::string> rowsOf(const std::string& file, const std::string& sql) {
    return rowsOf(opened(file).get(), sql);
}

Walk scriptedWalk(Files files, ScanReport report) {
    return [files = std::move(files), report = std::move(report)](const EntrySink& sink) {
        ScanReport result = report;
        std::vector<ScanEntry> batch;
        for (const auto& [path, size] : files) {
            batch.push_back({path, size, 0});
            result.filesSeen += 1;
            result.totalBytes += size;
            if (batch.size() < scanBatchLimit) continue;
            sink(batch);
            batch.clear();
        }
        if (!batch.empty()) sink(batch);
        return result;
    };
}

}  // namespace brindle
