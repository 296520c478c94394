#pragma once

#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/HistorySource.h"
#include "model/LocalDay.h"
#include "store/SQLiteConnection.h"

#include <optional>
#include <vector>

// The reads of estimates behind HistoryStore. An absent location means all, removed ones included.

namespace brindle {

[[nodiscard]] std::vector<FileChange> estimatesBetween(SQLiteConnection& db, const LocalDay& first,
                                                       const LocalDay& last,
                                                       const std::optional<LocationID>& location);

/// The same, one at a time; each is valid during the call.
void eachEstimateBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                         const std::optional<LocationID>& location, const ChangeSink& sink);

[[nodiscard]] ChangeCount countEstimatesBetween(SQLiteConnection& db, const LocalDay& first,
                                                const LocalDay& last,
                                                const std::optional<LocationID>& location);

[[nodiscard]] std::vector<EstimatedFolder> estimateContributorsSince(
    SQLiteConnection& db, const LocalDay& first, const std::optional<LocationID>& location);

}  // namespace brindle
