#pragma once

#include "model/LocationID.h"
#include "model/Walk.h"
#include "store/LargerCache.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <span>
#include <vector>

namespace brindle {

/// Writes a location's first inventory while its walk goes on, in place of whatever stood there. Lives inside
/// the commit's transaction.
class BaselineInventory {
public:
    BaselineInventory(SQLiteConnection& db, const LocationID& location);

    /// Throws: SQLiteError when a path comes twice.
    void add(std::span<const ScanEntry> batch);

    /// The sizes of what was added, summed.
    [[nodiscard]] std::int64_t bytes() const { return bytes_; }

private:
    void insert(SQLiteStatement& statement, std::span<const ScanEntry> rows);

    const LocationID& location_;
    LargerCache cache_;
    SQLiteStatement insertMany_;
    SQLiteStatement insertOne_;
    std::vector<SQLiteValue> values_;
    std::int64_t bytes_ = 0;
};

}  // namespace brindle
