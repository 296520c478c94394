#include "store/InventoryMerge.h"

#include "model/CheckedSum.h"

#include <stdexcept>

namespace brindle {

InventoryMerge::InventoryMerge(SQLiteConnection& db, const LocationID& location, Differences& differences)
    : differences_(differences),
      inventory_(db.prepare("SELECT rel_path, size FROM inventory WHERE location_id = ? ORDER BY rel_path")) {
    inventory_.bind(location.rawValue);
    nextStored();
}

void InventoryMerge::add(std::span<const ScanEntry> batch) {
    for (const ScanEntry& entry : batch) add(entry);
}

void InventoryMerge::add(const ScanEntry& entry) {
    const std::string_view path = entry.relativePath;
    if (path <= lastPath_) throw std::logic_error("The files of a walk came out of order.");
    lastPath_ = path;
    // Of most files both sides know the same, and one comparison tells.
    int order = hasStored_ ? storedPath_.compare(path) : 1;
    for (; order < 0; order = hasStored_ ? storedPath_.compare(path) : 1) {
        differences_.add(storedPath_, {}, storedSize_);
        nextStored();
    }
    if (order > 0) {
        differences_.add(path, entry.size, {});
    } else {
        if (storedSize_ != entry.size) differences_.add(path, entry.size, storedSize_);
        nextStored();
    }
}

void InventoryMerge::finish() {
    for (; hasStored_; nextStored()) differences_.add(storedPath_, {}, storedSize_);
}

void InventoryMerge::nextStored() {
    hasStored_ = inventory_.step();
    if (!hasStored_) return;
    storedPath_ = inventory_.textView(0);
    storedSize_ = inventory_.int64(1);
    inventoryBytes_ = checkedSum(inventoryBytes_, storedSize_);
}

}  // namespace brindle
