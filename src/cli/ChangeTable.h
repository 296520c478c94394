#pragma once

#include "cli/LocationNames.h"
#include "cli/Output.h"
#include "cli/Table.h"
#include "model/FolderSummary.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// A change as the cells of these columns: amount, what happened, and the path below `roots` (the names of
/// the locations; null where it is clear which it is).
inline constexpr std::array changeColumns = {ColumnKind::figure, ColumnKind::word, ColumnKind::path};
[[nodiscard]] std::vector<Cell> changeRow(const FileChange& change, const LocationNames* roots);

/// A folder as the cells of these columns: what was added to it, what was freed, and its path.
inline constexpr std::array folderColumns = {ColumnKind::figure, ColumnKind::figure, ColumnKind::path};
[[nodiscard]] std::vector<Cell> folderRow(const FolderSummary& folder, const LocationNames& roots);
[[nodiscard]] Table folderTable(std::span<const FolderSummary> folders, const LocationNames& roots);

/// "+1.2 MB added, −3.0 kB freed in 5 files".
[[nodiscard]] std::string totalsText(const ChangeTotals& totals, const Output& output);

}  // namespace brindle
