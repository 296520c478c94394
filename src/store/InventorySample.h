#pragma once

#include "model/LocationID.h"
#include "store/SQLiteConnection.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace brindle {

/// Some of the files that the last check of a location saw.
struct InventorySample {
    std::vector<std::string> paths;  // relative to the location; ascending
    std::int64_t fileCount = 0;      // of all that it saw

    bool operator==(const InventorySample&) const = default;
};

/// Behind HistoryStore::sampleInventory().
[[nodiscard]] InventorySample sampleInventory(SQLiteConnection& db, const LocationID& location,
                                              std::size_t limit);

}  // namespace brindle
