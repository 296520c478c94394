#pragma once

#include "model/HistorySnapshot.h"
#include "model/HistorySource.h"

#include <cstddef>
#include <string>
#include <vector>

namespace brindle {

/// What the Overview shows beyond the figures of the snapshot.
struct OverviewReading {
    std::string sentence;                     // today's change; empty without a check
    std::vector<FolderSummary> contributors;  // of the week, in the order of largestFirst()
    bool isComplete = false;                  // it was read
};

/// Reads it, for as long as that takes, in memory that grows with the folders and not with the changes.
/// Any thread. Throws the source's error.
[[nodiscard]] OverviewReading readOverview(HistorySource& source, const HistorySnapshot& snapshot,
                                           const LocationScope& scope, const LocalDay& weekFirst,
                                           std::size_t contributors);

}  // namespace brindle
