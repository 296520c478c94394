#pragma once

#include "model/LocationID.h"
#include "model/UnixTime.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// Changes of a location on a day that one check recorded: all ids from the first through the last are
/// theirs.
struct ChangeRun {
    UnixTime observedAt = 0;
    std::int64_t firstID = 0;
    std::int64_t lastID = 0;
};

/// The day's changes as runs, one after the other in the order of their times and ids, so that they can be
/// read in that order without being sorted. Nothing when there are very many.
[[nodiscard]] std::optional<std::vector<ChangeRun>> changeRunsOf(SQLiteConnection& db, const std::string& day,
                                                                 const std::optional<LocationID>& location);

}  // namespace brindle
