#pragma once

#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/HistorySource.h"
#include "model/LocalDay.h"
#include "store/SQLiteConnection.h"

#include <cstddef>
#include <optional>
#include <vector>

// The reads of recorded changes behind HistoryStore. An absent location means all, removed ones included.

namespace brindle {

[[nodiscard]] std::vector<FileChange> changesOn(SQLiteConnection& db, const LocalDay& day,
                                                const std::optional<LocationID>& location);

[[nodiscard]] std::vector<FileChange> changesBetween(SQLiteConnection& db, const LocalDay& first,
                                                     const LocalDay& last,
                                                     const std::optional<LocationID>& location);

/// The same, one at a time; each is valid during the call.
void eachChangeBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                       const std::optional<LocationID>& location, const ChangeSink& sink);

[[nodiscard]] ChangeCount countChangesBetween(SQLiteConnection& db, const LocalDay& first,
                                              const LocalDay& last,
                                              const std::optional<LocationID>& location);

/// One summary for each folder that changes are credited to.
[[nodiscard]] std::vector<FolderSummary> contributorsBetween(SQLiteConnection& db, const LocalDay& first,
                                                             const LocalDay& last,
                                                             const std::optional<LocationID>& location);

[[nodiscard]] std::vector<FileChange> largestChangesOfCheck(SQLiteConnection& db, const LocationID& location,
                                                            const LocalDay& day, UnixTime finishedAt,
                                                            std::size_t limit);

}  // namespace brindle
