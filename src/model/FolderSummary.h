#pragma once

#include "model/Change.h"
#include "model/Estimates.h"

#include <cstddef>
#include <span>
#include <vector>

namespace brindle {

/// What changed in a folder and everything below it.
struct FolderSummary {
    FolderRef ref;
    ChangeTotals totals;

    bool operator==(const FolderSummary&) const = default;
};

/// What estimates put into a folder and everything below it.
struct EstimatedFolder {
    FolderRef ref;
    EstimateTotals totals;

    bool operator==(const EstimatedFolder&) const = default;
};

/// The changes by folder, cut at `depth` components and never below a package; in no particular order.
[[nodiscard]] std::vector<FolderSummary> groupedByFolder(std::span<const FileChange> changes,
                                                         std::size_t depth);

/// The `limit` folders with the largest volume of change, largest first; equal ones by location, then by
/// components.
[[nodiscard]] std::vector<FolderSummary> largestFirst(std::vector<FolderSummary> folders, std::size_t limit);

}  // namespace brindle
