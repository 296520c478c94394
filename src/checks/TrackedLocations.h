#pragma once

#include "store/HistoryStore.h"

#include <optional>
#include <vector>

namespace brindle {

// What is tracked, as of the last commit. Both wait for the reader's queue. Throw: SQLiteError.

[[nodiscard]] std::vector<LocationRecord> trackedLocations(HistoryStore& store);

/// The record of a location; nothing when it was removed or forgotten.
[[nodiscard]] std::optional<LocationRecord> trackedLocation(HistoryStore& store, const LocationID& id);

}  // namespace brindle
