#pragma once

#include "model/HistorySnapshot.h"

#include <optional>
#include <string>

namespace brindle {

/// The folder at a path, in the innermost location that holds it; absent for the empty text. It need not be
/// there any more. Throws: UsageError when no location, included now or once, holds it.
[[nodiscard]] std::optional<FolderRef> folderNamed(const std::string& path, const HistorySnapshot& snapshot);

/// The location of this path or this name; all of them for the empty text. Throws: UsageError for none, and
/// for a name that several have.
[[nodiscard]] LocationScope locationNamed(const std::string& pathOrName, const HistorySnapshot& snapshot);

}  // namespace brindle
