#include "store/SQLiteError.h"

#include <fmt/format.h>
#include <sqlite3.h>

namespace brindle {

SQLiteError::SQLiteError(int code, std::string message)
    : std::runtime_error(fmt::format("SQLite error {}: {}", code, message)),
      code_(code),
      message_(std::move(message)) {}

bool SQLiteError::isDamage() const {
    return primaryCode() == SQLITE_CORRUPT || primaryCode() == SQLITE_NOTADB;
}
bool SQLiteError::isFull() const {
    // The index of the log is all that a history needs room for while it is only read.
    return primaryCode() == SQLITE_FULL || code_ == SQLITE_IOERR_SHMSIZE;
}
bool SQLiteError::isLocked() const {
    return primaryCode() == SQLITE_BUSY || primaryCode() == SQLITE_LOCKED;
}
bool SQLiteError::isWrongStatement() const {
    return primaryCode() == SQLITE_ERROR;
}
bool SQLiteError::isReadOnly() const {
    return primaryCode() == SQLITE_READONLY || primaryCode() == SQLITE_CANTOPEN ||
           primaryCode() == SQLITE_PERM;
}

}  // namespace brindle
