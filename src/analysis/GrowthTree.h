#pragma once

#include "model/FolderSummary.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace brindle {

/// A folder with the folders in it that grew. Growth is net: what was added less what was freed, in a folder
/// and everything below it.
struct GrownFolder {
    FolderRef ref;
    std::int64_t net = 0;              // negative for a folder that shrank and holds one that grew
    std::vector<GrownFolder> folders;  // by the most that one of them, or a folder below it, grew
    std::int64_t smallerFolders = 0;   // others in it that grew, and by how much together
    std::int64_t smallerBytes = 0;

    bool operator==(const GrownFolder&) const = default;
};

/// What grew, as trees: at most one a location. Equal growth is ordered by location and components.
///
/// A folder is listed when it, or one below it, grew by more than `over`; without `over`, by at least a
/// fiftieth of what the folder grew that grew most. Folders inside a package count as the package. A folder
/// in which nothing changed but in one folder of it stands for both: only the lower one is listed.
[[nodiscard]] std::vector<GrownFolder> growthTree(std::span<const FileChange> changes,
                                                  std::optional<std::int64_t> over);

}  // namespace brindle
