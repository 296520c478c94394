#include "store/SQLiteStatement.h"

#include "store/SQLiteError.h"

#include <sqlite3.h>

namespace brindle {
namespace {

int bindOne(sqlite3_stmt* statement, int index, std::int64_t integer) {
    return sqlite3_bind_int64(statement, index, integer);
}
int bindOne(sqlite3_stmt* statement, int index, double real) {
    return sqlite3_bind_double(statement, index, real);
}
int bindOne(sqlite3_stmt* statement, int index, std::string_view text) {
    const std::string_view whole = text.substr(0, text.find('\0'));
    // An empty view may have no address, which SQLite would take for NULL.
    return sqlite3_bind_text64(statement, index, whole.empty() ? "" : whole.data(), whole.size(),
                               SQLITE_TRANSIENT, SQLITE_UTF8);
}
int bindOne(sqlite3_stmt* statement, int index, SQLiteValue::Blob blob) {
    if (blob.empty()) return sqlite3_bind_zeroblob(statement, index, 0);
    return sqlite3_bind_blob64(statement, index, blob.data(), blob.size(), SQLITE_TRANSIENT);
}
int bindOne(sqlite3_stmt* statement, int index, std::nullptr_t) {
    return sqlite3_bind_null(statement, index);
}

}  // namespace

void SQLiteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

SQLiteStatement::SQLiteStatement(std::shared_ptr<sqlite3> connection, std::string_view sql)
    : connection_(std::move(connection)) {
    sqlite3_stmt* prepared = nullptr;
    const int code =
        sqlite3_prepare_v2(connection_.get(), sql.data(), static_cast<int>(sql.size()), &prepared, nullptr);
    statement_.reset(prepared);
    if (code != SQLITE_OK || prepared == nullptr) fail(code);
}

void SQLiteStatement::bindAll(std::span<const SQLiteValue> values) {
    sqlite3_reset(statement_.get());
    sqlite3_clear_bindings(statement_.get());
    int index = 1;
    for (const SQLiteValue& value : values) {
        const int code =
            std::visit([&](auto held) { return bindOne(statement_.get(), index, held); }, value.storage());
        if (code != SQLITE_OK) fail(code);
        ++index;
    }
}

bool SQLiteStatement::step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) fail(code);
    return false;
}

void SQLiteStatement::fail(int code) const {
    throw SQLiteError(code, sqlite3_errmsg(connection_.get()));
}

bool SQLiteStatement::isNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::string_view SQLiteStatement::textView(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

std::int64_t SQLiteStatement::int64(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

double SQLiteStatement::real(int column) const {
    return sqlite3_column_double(statement_.get(), column);
}

std::optional<std::int64_t> SQLiteStatement::optionalInt64(int column) const {
    return isNull(column) ? std::nullopt : std::optional(int64(column));
}

std::optional<double> SQLiteStatement::optionalReal(int column) const {
    return isNull(column) ? std::nullopt : std::optional(real(column));
}

std::optional<std::vector<std::byte>> SQLiteStatement::blob(int column) const {
    const auto* bytes = static_cast<const std::byte*>(sqlite3_column_blob(statement_.get(), column));
    if (bytes == nullptr) return {};
    return std::vector<std::byte>(bytes, bytes + sqlite3_column_bytes(statement_.get(), column));
}

}  // namespace brindle
