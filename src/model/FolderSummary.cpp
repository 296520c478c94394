#include "model/FolderSummary.h"

#include "model/Packages.h"

#include <algorithm>

namespace brindle {

void FolderSums::add(const FileChange& change) {
    sums_[{change.locationID, change.folder.first(creditedDepth(change.folder, depth_))}].add(change);
}

std::vector<FolderSummary> FolderSums::summaries() const {
    std::vector<FolderSummary> folders;
    folders.reserve(sums_.size());
    for (const auto& [ref, totals] : sums_) folders.push_back({ref, totals});
    return folders;
}

std::vector<FolderSummary> groupedByFolder(std::span<const FileChange> changes, std::size_t depth) {
    FolderSums sums(depth);
    for (const FileChange& change : changes) sums.add(change);
    return sums.summaries();
}

std::vector<FolderSummary> largestFirst(std::vector<FolderSummary> folders, std::size_t limit) {
    const auto shown = static_cast<std::ptrdiff_t>(std::min(limit, folders.size()));
    std::ranges::partial_sort(folders, folders.begin() + shown,
                              [](const FolderSummary& a, const FolderSummary& b) {
                                  const auto volumeOfA = a.totals.volume();
                                  const auto volumeOfB = b.totals.volume();
                                  return volumeOfA != volumeOfB ? volumeOfA > volumeOfB : a.ref < b.ref;
                              });
    folders.erase(folders.begin() + shown, folders.end());
    return folders;
}

}  // namespace brindle
