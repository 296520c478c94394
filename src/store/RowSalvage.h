#pragma once

#include "store/DatabasePages.h"
#include "store/SavedTables.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace brindle {

/// What was found of one table.
struct SalvagedTable {
    const SavedTable* table = nullptr;
    std::size_t refusedRows = 0;   // that are in their place, but are not what can have been written
    std::size_t damagedPages = 0;  // that belong to it, and cannot be read or not as a whole
    bool isListed = true;          // in the list of the tables, as far as that can be read
};

using SavedRowSink = std::function<void(const SavedTable&, const SavedRow&)>;

/// Hands every row that can be read in a damaged history to `sink`: first those that are found from the list
/// of the tables, then those on pages that nothing leads to any more, which are known by what they hold. Rows
/// come in no particular order; two may have one key. Throws what the sink throws, and std::system_error.
[[nodiscard]] std::vector<SalvagedTable> salvageRows(const DatabasePages& pages, const SavedRowSink& sink);

}  // namespace brindle
