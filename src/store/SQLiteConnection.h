#pragma once

#include "store/SQLiteStatement.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;

namespace brindle {

/// One open database handle. Opened without SQLite's own locking: used by one thread at a time, which its
/// DatabaseQueue sees to. Waits for another writer as long as usualPatience says.
///
/// In debug builds a statement that outlives its connection stops the process.
class SQLiteConnection {
public:
    static constexpr std::chrono::milliseconds usualPatience{10'000};

    enum class Access {
        write,               // creates the file if need be
        read,                // as one of several programs that have it open
        readWithFixedIndex,  // nobody has it open; log and index are there and stay as they are
        readUnchanging,      // nobody has it open, and it has no log
    };

    /// Throws: SQLiteError.
    explicit SQLiteConnection(std::string path, Access access = Access::write);
    ~SQLiteConnection();
    SQLiteConnection(const SQLiteConnection&) = delete;
    SQLiteConnection& operator=(const SQLiteConnection&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Runs one or more statements separated by ";": pragmas, transaction control, scripts.
    void execute(const std::string& sql);

    /// Compiles the first statement of the text. Throws: SQLiteError, with code 0 for a text without one.
    [[nodiscard]] SQLiteStatement prepare(std::string_view sql) { return {handle_, sql}; }

    /// Runs one statement to its end, passing over its rows.
    template <SQLiteBindable... Values>
    void run(std::string_view sql, const Values&... values) {
        SQLiteStatement statement = prepare(sql);
        statement.bind(values...);
        statement.finish();
    }

    /// Column 0 of the first row; absent when there is no row or the column is NULL.
    template <SQLiteBindable... Values>
    [[nodiscard]] std::optional<std::int64_t> scalarInt64(std::string_view sql, const Values&... values) {
        SQLiteStatement statement = prepare(sql);
        statement.bind(values...);
        if (!statement.step()) return {};
        const auto first = statement.optionalInt64(0);
        statement.finish();
        return first;
    }

    [[nodiscard]] std::int64_t lastInsertRowID() const;

    /// How long to wait for another writer, and in a checkpoint for readers.
    void setPatience(std::chrono::milliseconds patience);

    /// From now on, closing leaves the write-ahead log as it is instead of folding it into the file.
    void leaveLogOnClose();

private:
    std::string path_;
    std::shared_ptr<sqlite3> handle_;
};

}  // namespace brindle
