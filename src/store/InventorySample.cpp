#include "store/InventorySample.h"

#include <algorithm>

namespace brindle {

InventorySample sampleInventory(SQLiteConnection& db, const LocationID& location, std::size_t limit) {
    InventorySample sample{
        .paths = {},
        .fileCount = db.scalarInt64("SELECT COUNT(*) FROM inventory WHERE location_id = ?", location.rawValue)
                         .value_or(0)};
    const auto step = std::max<std::int64_t>(1, sample.fileCount / static_cast<std::int64_t>(limit));
    auto rows = db.prepare("SELECT rel_path FROM inventory WHERE location_id = ? ORDER BY rel_path");
    rows.bind(location.rawValue);
    for (std::int64_t row = 0; rows.step(); ++row)
        if (row % step == 0) sample.paths.push_back(rows.text(0));
    return sample;
}

}  // namespace brindle
