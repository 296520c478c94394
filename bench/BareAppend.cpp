// brindle_bare_append FILE ROWS: appends the rows of a scripted walk to a table like the inventory of a
// history, one by one with one prepared statement in one transaction, and nothing else. What is left of the
// time of a first check is its own.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

#include "ScriptedWalk.h"

namespace brindle {
namespace {

void execute(sqlite3* db, const char* sql) {
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(db));
}

void append(sqlite3* db, std::int64_t rows) {
    execute(db, "PRAGMA journal_mode = WAL");
    execute(
        db,
        "CREATE TABLE inventory (location_id TEXT NOT NULL, rel_path TEXT NOT NULL, size INTEGER NOT NULL, "
        "PRIMARY KEY (location_id, rel_path)) WITHOUT ROWID");
    execute(db, "BEGIN");
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO inventory VALUES ('scripted', ?, ?)", -1, &insert, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owned(insert, sqlite3_finalize);
    static_cast<void>(scriptedFiles(rows)([&](std::span<const ScanEntry> batch) {
        for (const ScanEntry& entry : batch) {
            sqlite3_bind_text(insert, 1, entry.relativePath.data(),
                              static_cast<int>(entry.relativePath.size()), SQLITE_STATIC);
            sqlite3_bind_int64(insert, 2, entry.size);
            if (sqlite3_step(insert) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(db));
            sqlite3_reset(insert);
        }
    }));
    execute(db, "COMMIT");
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: brindle_bare_append FILE ROWS\n", stderr);
        return 2;
    }
    sqlite3* opened = nullptr;
    if (sqlite3_open(argv[1], &opened) != SQLITE_OK) throw std::runtime_error("the file can't be opened");
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(opened, sqlite3_close);
    brindle::append(opened, std::atoll(argv[2]));
    return 0;
}
