#pragma once

#include "model/LocationID.h"
#include "model/Walk.h"
#include "store/Differences.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace brindle {

/// Holds what a walk sees against a location's inventory while the walk goes on: both come in the byte order
/// of their paths, so that one pass over each finds every difference, and only those are written anywhere.
///
/// Lives inside a transaction, from whose beginning it sees the inventory.
class InventoryMerge {
public:
    InventoryMerge(SQLiteConnection& db, const LocationID& location, Differences& differences);

    /// Throws: std::logic_error when a path does not come after the one before it.
    void add(std::span<const ScanEntry> batch);

    /// The walk is over: what is left of the inventory it did not see.
    void finish();

    /// The sizes of the whole inventory, summed; once finished.
    [[nodiscard]] std::int64_t inventoryBytes() const { return inventoryBytes_; }

private:
    void add(const ScanEntry& entry);
    void nextStored();

    Differences& differences_;
    SQLiteStatement inventory_;
    std::int64_t inventoryBytes_ = 0;
    bool hasStored_ = false;
    std::string_view storedPath_;  // into the current row of `inventory_`
    std::int64_t storedSize_ = 0;
    std::string lastPath_;
};

}  // namespace brindle
