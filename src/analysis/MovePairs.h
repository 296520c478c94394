#pragma once

#include "model/Change.h"

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace brindle {

inline constexpr std::size_t noPair = std::numeric_limits<std::size_t>::max();

/// For each change the place of its other half, or noPair: a file removed and a file added, of one name and
/// size, that one run of checks found. Empty when there is no pair at all. Order of the changes does not
/// matter.
///
/// A pair needs more than its name and size to be believed:
///
/// - Files that are the only ones of their name and size on both sides, if they are not small, or if several
///   went the same way.
/// - Files of which several are alike, as many as are gone, if one folder's files are found in one other
///   folder, and in no third one just as well.
/// - Below a folder whose files went to another one, files at the same place below that one.
///
/// Two files go the same way when their paths are the same below two folders. What has several answers even
/// so has none.
[[nodiscard]] std::vector<std::size_t> movePairs(std::span<const FileChange> changes);

/// How many of the last components two paths share.
[[nodiscard]] std::size_t sharedEnd(const FolderPath& a, const FolderPath& b);

}  // namespace brindle
