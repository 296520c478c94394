#include "checks/TrackedLocations.h"

namespace brindle {

std::vector<LocationRecord> trackedLocations(HistoryStore& store) {
    auto records = store.loadLocations().get();
    std::erase_if(records, [](const LocationRecord& record) { return record.removedAt.has_value(); });
    return records;
}

std::optional<LocationRecord> trackedLocation(HistoryStore& store, const LocationID& id) {
    for (LocationRecord& record : trackedLocations(store))
        if (record.id == id) return std::move(record);
    return {};
}

}  // namespace brindle
