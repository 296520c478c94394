#include "model/FolderSummary.h"

#include "model/Packages.h"

#include <algorithm>
#include <unordered_map>

namespace brindle {

std::vector<FolderSummary> groupedByFolder(std::span<const FileChange> changes, std::size_t depth) {
    std::unordered_map<FolderRef, ChangeTotals> totals;
    for (const FileChange& change : changes) {
        totals[{change.locationID, change.folder.first(creditedDepth(change.folder, depth))}].add(change);
    }
    std::vector<FolderSummary> folders;
    folders.reserve(totals.size());
    for (const auto& [ref, sums] : totals) folders.push_back({ref, sums});
    return folders;
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
