#pragma once

#include "model/Cancellation.h"
#include "model/Estimates.h"
#include "model/LocationID.h"
#include "model/UnixTime.h"
#include "store/SQLiteConnection.h"

#include <memory>

namespace brindle {

/// The estimates of one location, as the store needs them.
struct EstimateRequest {
    LocationID locationID;
    EstimateWalk walk;
    std::shared_ptr<const CancellationFlag> cancellation;
    Clock now = systemNow;  // asked once, after the walk
};

/// Walks the location and puts what the walk found in the place of the location's estimates, in one
/// transaction. Groups of the same day and folder become one row.
///
/// Throws: what the walk throws, Cancelled, SQLiteError. Then the estimates are as they were.
/// Thread:  the writer's.
[[nodiscard]] EstimateTotals replaceEstimates(SQLiteConnection& db, const EstimateRequest& request);

/// Removes all estimates, and when they were made.
void clearEstimates(SQLiteConnection& db);

}  // namespace brindle
