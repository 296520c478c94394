#include "store/SQLiteConnection.h"

#include "store/SQLiteError.h"

#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace brindle {

SQLiteConnection::SQLiteConnection(std::string path, bool readOnly) : path_(std::move(path)) {
    const int flags =
        SQLITE_OPEN_NOMUTEX | (readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path_.c_str(), &opened, flags, nullptr);
    handle_.reset(opened, sqlite3_close_v2);
    if (opened == nullptr) throw SQLiteError(code, "Couldn't open the database");
    if (code != SQLITE_OK) throw SQLiteError(code, sqlite3_errmsg(opened));
    setPatience(usualPatience);
}

SQLiteConnection::~SQLiteConnection() {
#ifndef NDEBUG
    if (auto* left = sqlite3_next_stmt(handle_.get(), nullptr)) {
        std::fprintf(stderr, "brindle: a statement outlives its connection: %s\n", sqlite3_sql(left));
        std::abort();
    }
#endif
}

void SQLiteConnection::execute(const std::string& sql) {
    char* text = nullptr;
    const int code = sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, &text);
    const std::unique_ptr<char, decltype(&sqlite3_free)> owned(text, sqlite3_free);
    if (code != SQLITE_OK) throw SQLiteError(code, text != nullptr ? text : "Unknown error");
}

std::int64_t SQLiteConnection::lastInsertRowID() const {
    return sqlite3_last_insert_rowid(handle_.get());
}

void SQLiteConnection::setPatience(std::chrono::milliseconds patience) {
    sqlite3_busy_timeout(handle_.get(), static_cast<int>(patience.count()));
}

void SQLiteConnection::leaveLogOnClose() {
    sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

}  // namespace brindle
