#pragma once

#include "model/Calendar.h"
#include "model/Cancellation.h"
#include "model/Estimates.h"
#include "model/LocationRecord.h"
#include "model/Walk.h"
#include "store/HistoryStore.h"

#include <memory>
#include <string>

namespace brindle {

/// What is estimated, and how.
struct EstimateOrder {
    LocationRecord record;  // as stored after its check: with a baseline
    std::string scanPath;   // what its check walked
    ScanRules rules;        // of its check
    std::shared_ptr<const CancellationFlag> cancellation;
    Clock now = systemNow;
    Calendar calendar = Calendar::current();
};

/// Makes the estimates of one location's earlier history, in place of those that it had: for the days from 89
/// before today through the one before its first check. A location without such days is not walked and has
/// none.
///
/// Waits for the walk and the write, which run on the store's writer queue as one work item.
/// Throws: Cancelled, ScanError, SQLiteError. Then the location's estimates are as they were.
[[nodiscard]] EstimateTotals makeEstimates(HistoryStore& store, const EstimateOrder& order);

}  // namespace brindle
