#pragma once

#include "store/SQLiteValue.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace brindle {

/// One prepared statement, finalised when it goes. Made by SQLiteConnection::prepare(); keeps the database
/// handle open. Used on the thread of its connection's queue only.
///
///     auto rows = db.prepare("SELECT rel_path, size FROM inventory WHERE location_id = ?");
///     rows.bind(location.rawValue);
///     while (rows.step()) use(rows.text(0), rows.int64(1));
class SQLiteStatement {
public:
    SQLiteStatement(std::shared_ptr<sqlite3> connection, std::string_view sql);

    /// Starts over with these values for the `?`s, in order. Text is cut at its first NUL.
    /// Throws: SQLiteError, for instance when there are more values than `?`s.
    template <SQLiteBindable... Values>
    void bind(const Values&... values) {
        const std::array<SQLiteValue, sizeof...(Values)> all{SQLiteValue(values)...};
        bindAll(all);
    }

    /// The same, for a number of values that only the caller knows.
    void bindAll(std::span<const SQLiteValue> values);

    /// True when there is a row to read, false when the statement is done. Throws: SQLiteError otherwise.
    bool step();

    /// Steps until done, passing over rows. Throws: SQLiteError.
    void finish() {
        while (step()) {
        }
    }

    // Columns of the current row, counted from 0. A view is valid until the next step.
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::string_view textView(int column) const;  // NULL reads as empty
    [[nodiscard]] std::string text(int column) const { return std::string(textView(column)); }
    [[nodiscard]] std::int64_t int64(int column) const;  // NULL reads as 0
    [[nodiscard]] bool boolean(int column) const { return int64(column) != 0; }
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::optional<std::int64_t> optionalInt64(int column) const;
    [[nodiscard]] std::optional<double> optionalReal(int column) const;
    [[nodiscard]] std::optional<std::vector<std::byte>> blob(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    [[noreturn]] void fail(int code) const;

    std::shared_ptr<sqlite3> connection_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

}  // namespace brindle
