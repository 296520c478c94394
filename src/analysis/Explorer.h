#pragma once

#include "analysis/ExplorerState.h"
#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/TextSearch.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// Some changes of a list that is kept elsewhere and must outlive them: a list may hold half a million.
using ChosenChanges = std::vector<const FileChange*>;

/// What an explorer shows of one folder.
struct ExplorerLevel {
    std::vector<FolderSummary> folders;  // in the order of largestFirst()
    ChosenChanges files;                 // in the order of FileSort::largest
    ChangeTotals totals;                 // of everything in the folder and below it
};

/// The changes in `direction` that have the search in their name or in the name of a folder they lie in, in
/// the order of the list.
[[nodiscard]] ChosenChanges filtered(std::span<const FileChange> changes, DirectionFilter direction,
                                     const TextSearch& search);

/// The folders directly in `folder` with what changed in and below them, and the changes of its own files.
/// A package is not opened: in a package, all below it are files of its own. At the top, without a folder,
/// there is one folder for each location, its root, and no files.
[[nodiscard]] ExplorerLevel levelOf(std::span<const FileChange* const> changes,
                                    const std::optional<FolderRef>& folder);

/// The changes in and below `folder`, all of them without one, sorted. The locale is that of the names'
/// order.
[[nodiscard]] ChosenChanges filesIn(std::span<const FileChange* const> changes,
                                    const std::optional<FolderRef>& folder, FileSort sort,
                                    const std::string& locale);

[[nodiscard]] ChangeTotals totalsOf(std::span<const FileChange* const> changes);

inline constexpr std::size_t filesOfPage = 200;

/// One page of a list of files.
struct FilePage {
    std::span<const FileChange* const> files;
    std::size_t number = 0;  // the first is 0
    std::size_t pages = 1;   // an empty list has one, too
};

/// The page of this number; the nearest one where there is none.
[[nodiscard]] FilePage filePage(std::span<const FileChange* const> files, int number);

}  // namespace brindle
