#include "store/BaselineInventory.h"

#include "model/CheckedSum.h"

namespace brindle {

BaselineInventory::BaselineInventory(SQLiteConnection& db, const LocationID& location)
    : location_(location),
      insert_(db.prepare("INSERT INTO inventory (location_id, rel_path, size) VALUES (?, ?, ?)")) {
    db.run("DELETE FROM inventory WHERE location_id = ?", location.rawValue);
}

void BaselineInventory::add(std::span<const ScanEntry> batch) {
    for (const ScanEntry& entry : batch) {
        insert_.bind(location_.rawValue, entry.relativePath, entry.size);
        insert_.finish();
        bytes_ = checkedSum(bytes_, entry.size);
    }
}

}  // namespace brindle
