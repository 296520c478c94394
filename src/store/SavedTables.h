#pragma once

#include "store/BTreePage.h"
#include "store/SQLiteValue.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// A row of a table of the history, found in a damaged file.
struct SavedRow {
    std::int64_t rowID = 0;  // 0 where the table has none
    StoredRow values;        // one a column; what an older version did not have yet is NULL
};

/// A table of the history, as every version's file holds it: a newer version only added columns at its end.
struct SavedTable {
    enum class Column : std::uint8_t;

    const char* name;
    const char* columnNames;  // begins with the row's number where rows have one
    bool hasRowIDs;
    std::span<const Column> columns;

    /// The row of the current version that was written as `row`; nothing when no program of ours can have
    /// written it. Rows with other bytes than were written may pass: nothing in the file tells.
    [[nodiscard]] std::optional<SavedRow> accept(std::int64_t rowID, StoredRow row) const;
    /// What stores a row in this table unless one with its key is there; see valuesOf().
    [[nodiscard]] std::string insertion() const;
    /// The values for the parameters of insertion(). Views of the row.
    [[nodiscard]] std::vector<SQLiteValue> valuesOf(const SavedRow& row) const;
};

/// All tables whose rows do not follow from those of others. Where a row could be one of several, the table
/// comes first whose rows are told more surely.
[[nodiscard]] std::span<const SavedTable> savedTables();

}  // namespace brindle
