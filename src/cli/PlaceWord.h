#pragma once

#include "model/HistorySnapshot.h"

#include <optional>
#include <string>

namespace brindle {

/// The folder at a path, in the innermost location that holds it; absent for the empty text. It need not be
/// there any more. Throws: UsageError when no location, included now or once, holds it.
[[nodiscard]] std::optional<FolderRef> folderNamed(const std::string& path, const HistorySnapshot& snapshot);

/// Whether the change lies in the folder or below it.
[[nodiscard]] bool liesIn(const FileChange& change, const FolderRef& folder);

/// The location of this path or, where there is none, of this name; all of them for the empty text. One that
/// is still tracked goes before those that were removed, of which the last is taken. Throws: UsageError.
[[nodiscard]] LocationScope scopeNamed(const std::string& text, const HistorySnapshot& snapshot);

}  // namespace brindle
