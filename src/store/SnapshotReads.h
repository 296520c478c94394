#pragma once

#include "model/Calendar.h"
#include "model/HistorySnapshot.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <unordered_map>

// The reads behind HistoryStore that sum the history up.

namespace brindle {

[[nodiscard]] HistorySnapshot loadSnapshot(SQLiteConnection& db, int days, const LocalDay& today,
                                           const Calendar& calendar);

[[nodiscard]] std::unordered_map<LocationID, std::int64_t> loadCloudOnlyBytes(SQLiteConnection& db);

}  // namespace brindle
