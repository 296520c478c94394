#include "store/SQLiteConnection.h"

#include "store/SQLiteError.h"

#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <sqlite3.h>

namespace brindle {
namespace {

/// What SQLite opens the file under, which carries how it is to be read.
std::string nameOf(const std::string& path, SQLiteConnection::Access access) {
    const bool isPlain =
        access == SQLiteConnection::Access::write || access == SQLiteConnection::Access::read;
    if (isPlain) return path;
    std::string name = "file:";
    for (const char c : path)
        name += c == '%' || c == '?' || c == '#' ? fmt::format("%{:02x}", static_cast<unsigned char>(c))
                                                 : std::string(1, c);
    return name + (access == SQLiteConnection::Access::readUnchanging ? "?immutable=1" : "?readonly_shm=1");
}

}  // namespace

SQLiteConnection::SQLiteConnection(std::string path, Access access) : path_(std::move(path)) {
    const int flags =
        SQLITE_OPEN_NOMUTEX | (access == Access::write ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE
                                                       : SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(nameOf(path_, access).c_str(), &opened, flags, nullptr);
    handle_.reset(opened, sqlite3_close_v2);
    if (opened == nullptr) throw SQLiteError(code, "Couldn't open the database");
    if (code != SQLITE_OK) throw SQLiteError(code, sqlite3_errmsg(opened));
    sqlite3_extended_result_codes(opened, 1);
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
