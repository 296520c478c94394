#pragma once

#include "store/DatabasePages.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace brindle {

/// A value as it is stored in a row.
using StoredBlob = std::vector<std::byte>;
using StoredValue = std::variant<std::nullptr_t, std::int64_t, double, std::string, StoredBlob>;
using StoredRow = std::vector<StoredValue>;

/// A page of a table or an index, as far as it makes sense.
struct BTreePage {
    enum class Kind : std::uint8_t { indexInterior = 2, tableInterior = 5, indexLeaf = 10, tableLeaf = 13 };

    struct Cell {
        PageNumber leftChild = 0;  // of interior pages
        std::int64_t rowID = 0;    // of tables
        std::uint64_t payloadSize = 0;
        std::size_t payloadAt = 0;  // in the page
        std::size_t localSize = 0;  // of the payload's part in the page
        PageNumber overflow = 0;    // where the payload goes on; 0: nowhere
    };

    Kind kind = Kind::tableLeaf;
    PageNumber rightChild = 0;
    std::vector<Cell> cells;      // those that lie within the page and in no other's place
    std::size_t refused = 0;      // cells that do not
    bool reachesPageEnd = false;  // whether a cell ends where the page ends
    bool isSound = false;         // whether cells and free space add up to the page

    [[nodiscard]] bool isLeaf() const { return kind == Kind::indexLeaf || kind == Kind::tableLeaf; }
    [[nodiscard]] bool isOfTable() const { return kind == Kind::tableInterior || kind == Kind::tableLeaf; }
    [[nodiscard]] bool holdsRows() const { return kind != Kind::tableInterior; }

    /// Nothing for what is no such page. `number` tells whether the file's header stands before it.
    [[nodiscard]] static std::optional<BTreePage> parse(std::span<const std::uint8_t> page,
                                                        PageNumber number);
};

/// The values of a row; nothing when its payload is none.
[[nodiscard]] std::optional<StoredRow> parseRow(std::span<const std::uint8_t> payload);

}  // namespace brindle
