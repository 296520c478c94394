#pragma once

#include "model/LocationID.h"
#include "model/UnixTime.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// Changes of a day that follow each other in the order of time and id: those that one check of a location
/// recorded, by their ids.
struct ChangeRun {
    LocationID location;
    UnixTime observedAt = 0;
    std::int64_t firstID = 0;
    std::int64_t lastID = 0;
};

/// The day's changes as runs, one after the other in the order of their times and ids, so that they can be
/// read in that order without being sorted. Nothing when they are not that orderly: where the ids of checks
/// that ended at the same moment are mixed, or there are very many runs.
[[nodiscard]] std::optional<std::vector<ChangeRun>> changeRunsOf(SQLiteConnection& db, const std::string& day,
                                                                 const std::optional<LocationID>& location);

}  // namespace brindle
