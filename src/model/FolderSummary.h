#pragma once

#include "model/Change.h"
#include "model/Estimates.h"

#include <cstddef>
#include <span>
#include <unordered_map>
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

/// Adds changes up by folder, one after the other.
class FolderSums {
public:
    /// Folders are cut at `depth` components and never below a package.
    explicit FolderSums(std::size_t depth) : depth_(depth) {}

    void add(const FileChange& change);
    /// In no particular order.
    [[nodiscard]] std::vector<FolderSummary> summaries() const;

private:
    std::size_t depth_;
    std::unordered_map<FolderRef, ChangeTotals> sums_;
};

/// The changes by folder, as FolderSums adds them up.
[[nodiscard]] std::vector<FolderSummary> groupedByFolder(std::span<const FileChange> changes,
                                                         std::size_t depth);

/// The `limit` folders with the largest volume of change, largest first; equal ones by location, then by
/// components.
[[nodiscard]] std::vector<FolderSummary> largestFirst(std::vector<FolderSummary> folders, std::size_t limit);

}  // namespace brindle
