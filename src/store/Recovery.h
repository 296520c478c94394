#pragma once

#include "model/UnixTime.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace brindle {

/// What became of one table of a damaged history.
struct RecoveredTable {
    std::string name;
    std::int64_t rows = 0;         // that came over
    std::size_t refusedRows = 0;   // in their place, but damaged
    std::size_t damagedPages = 0;  // whose rows are lost, or some of them

    [[nodiscard]] bool isWhole() const { return refusedRows == 0 && damagedPages == 0; }
};

struct RecoveryReport {
    std::vector<RecoveredTable> tables;
    /// Locations whose list of files was not whole. Their next check takes the files that it lacks in without
    /// recording them as added.
    std::vector<std::string> incompleteLocations;
    std::filesystem::path setAside;  // the damaged file
};

/// Brings every row of the damaged history in `directory` that can be read into a new one, and puts that in
/// its place once it is whole and on the disk; the damaged file is kept beside it, with its log, under the
/// name "History-damaged-2024-03-05T14-07-09Z.sqlite". A process that ends at any moment leaves the damaged
/// file, and everything can be done again. Sums that follow from rows are summed up anew.
///
/// The caller has seen to it that no other program uses the history; see HistoryLease.
/// Throws: SQLiteError, std::system_error; the damaged file is untouched and in its place then.
[[nodiscard]] RecoveryReport recoverHistory(const std::filesystem::path& directory, const Clock& now);

}  // namespace brindle
