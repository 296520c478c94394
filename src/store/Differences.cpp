#include "store/Differences.h"

#include <exception>

namespace brindle {
namespace {

constexpr const char* emptyDifferences = "DELETE FROM temp.differences";

}  // namespace

SQLiteConnection& Differences::withEmptyTable(SQLiteConnection& db) {
    db.execute(
        "CREATE TEMP TABLE IF NOT EXISTS differences (rel_path TEXT NOT NULL, size INTEGER, stored INTEGER)");
    db.execute(emptyDifferences);
    return db;
}

Differences::Differences(SQLiteConnection& db)
    : db_(withEmptyTable(db)),
      insert_(db.prepare("INSERT INTO temp.differences (rel_path, size, stored) VALUES (?, ?, ?)")) {}

Differences::~Differences() {
    try {
        db_.execute(emptyDifferences);
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): the next check empties it first
    }
}

void Differences::add(std::string_view path, std::optional<std::int64_t> size,
                      std::optional<std::int64_t> stored) {
    insert_.bind(path, size, stored);
    insert_.finish();
}

SQLiteStatement Differences::seen() {
    return db_.prepare(
        "SELECT rel_path, size, stored FROM temp.differences WHERE size IS NOT NULL ORDER BY rowid");
}

SQLiteStatement Differences::unseen() {
    return db_.prepare("SELECT rel_path, stored FROM temp.differences WHERE size IS NULL ORDER BY rowid");
}

}  // namespace brindle
