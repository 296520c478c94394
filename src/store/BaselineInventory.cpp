#include "store/BaselineInventory.h"

#include "model/CheckedSum.h"

#include <fmt/format.h>

namespace brindle {
namespace {

/// Several rows a statement: each finds its place beside the one before it, and a statement costs as much as
/// a row.
constexpr std::size_t rowsAStatement = 16;

/// In KiB. The inner pages of the table stay in it until their share of the rows is written: those of a
/// smaller cache are written to the log again and again, and then the whole log is summed up anew.
constexpr int cacheSize = 4096;

std::string insertOf(std::size_t rows) {
    std::string sql = "INSERT INTO inventory (location_id, rel_path, size) VALUES (?1, ?2, ?3)";
    for (std::size_t row = 1; row < rows; ++row)
        sql += fmt::format(", (?1, ?{}, ?{})", 2 * row + 2, 2 * row + 3);
    return sql;
}

}  // namespace

BaselineInventory::BaselineInventory(SQLiteConnection& db, const LocationID& location)
    : location_(location),
      cache_(db, cacheSize),
      insertMany_(db.prepare(insertOf(rowsAStatement))),
      insertOne_(db.prepare(insertOf(1))) {
    db.run("DELETE FROM inventory WHERE location_id = ?", location.rawValue);
}

void BaselineInventory::add(std::span<const ScanEntry> batch) {
    for (; batch.size() >= rowsAStatement; batch = batch.subspan(rowsAStatement))
        insert(insertMany_, batch.first(rowsAStatement));
    for (; !batch.empty(); batch = batch.subspan(1)) insert(insertOne_, batch.first(1));
}

void BaselineInventory::insert(SQLiteStatement& statement, std::span<const ScanEntry> rows) {
    values_.assign({location_.rawValue});
    for (const ScanEntry& row : rows) {
        values_.emplace_back(row.relativePath);
        values_.emplace_back(row.size);
        bytes_ = checkedSum(bytes_, row.size);
    }
    statement.bindAll(values_);
    statement.finish();
}

}  // namespace brindle
