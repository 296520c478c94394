#pragma once

#include "model/LocalDay.h"
#include "model/Volume.h"
#include "store/SQLiteConnection.h"

#include <string>
#include <vector>

// The reads of capacity samples behind HistoryStore.

namespace brindle {

/// The latest sample of each volume.
[[nodiscard]] std::vector<VolumeReading> latestReadings(SQLiteConnection& db);

/// By time.
[[nodiscard]] std::vector<VolumeReading> readingsBetween(SQLiteConnection& db, const std::string& volumeID,
                                                         const LocalDay& first, const LocalDay& last);

}  // namespace brindle
