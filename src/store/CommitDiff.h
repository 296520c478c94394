#pragma once

#include "model/Change.h"
#include "model/LocationID.h"
#include "model/Walk.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <string>

namespace brindle {

/// The check that differences are recorded under.
struct DiffContext {
    LocationID locationID;
    std::int64_t scanID = 0;
    UnixTime finishedAt = 0;
    std::string day;
};

/// Writes an observation for every difference between `temp.staging` and the location's inventory, brings
/// the inventory up to date, and returns what the observations add up to. Inside the commit's transaction.
[[nodiscard]] ChangeTotals recordDifferences(SQLiteConnection& db, const DiffContext& context,
                                             const ScanReport& report);

}  // namespace brindle
