#pragma once

#include "model/Change.h"
#include "model/LocationID.h"
#include "model/Walk.h"
#include "store/Differences.h"
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

/// What recording the differences came to.
struct RecordedDifferences {
    ChangeTotals totals;              // of the observations
    std::int64_t inventoryDelta = 0;  // bytes by which the inventory grew (shrank, when negative)
};

/// Writes an observation for every difference that is news, and brings the inventory up to date. Inside the
/// commit's transaction.
[[nodiscard]] RecordedDifferences recordDifferences(SQLiteConnection& db, const DiffContext& context,
                                                    const ScanReport& report, Differences& differences);

}  // namespace brindle
