#pragma once

#include "cli/Output.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brindle {

enum class ColumnKind {
    figure,  // to the right, never cut
    word,    // to the left, never cut
    path,    // to the left, cut to what the other columns leave on a terminal
};

/// A piece of a cell, harmless to show.
struct CellPart {
    std::string text;
    TextStyle style = TextStyle::plain;
};

/// Stands in one column; its parts follow each other. Of a path only the last part is cut.
struct Cell {
    Cell() = default;
    Cell(std::string text, TextStyle style = TextStyle::plain) : parts{{std::move(text), style}} {}
    Cell(std::vector<CellPart> all) : parts(std::move(all)) {}

    std::vector<CellPart> parts;
};

/// A change in bytes, with its sign and in its colour.
[[nodiscard]] Cell amountCell(std::int64_t byteDelta);
/// A name or path of the file system.
[[nodiscard]] Cell pathCell(std::string_view path);

/// Rows whose cells stand below each other, two columns in. What is written to a terminal fits its width,
/// as far as the cells that are never cut allow; what is written elsewhere is whole.
class Table {
public:
    /// At most one of the columns is a path.
    explicit Table(std::span<const ColumnKind> columns) : columns_(columns.begin(), columns.end()) {}
    Table(std::initializer_list<ColumnKind> columns) : columns_(columns) {}

    /// As many cells as there are columns, or fewer: those at the end are empty then.
    void add(std::vector<Cell> cells) { rows_.push_back(std::move(cells)); }
    [[nodiscard]] bool empty() const { return rows_.empty(); }

    void print(Output& output) const;

    /// In the colours of `output`, for a terminal of `width` columns, if any.
    [[nodiscard]] std::vector<std::string> lines(const Output& output,
                                                 std::optional<std::size_t> width) const;

private:
    [[nodiscard]] std::vector<std::size_t> columnWidths(std::optional<std::size_t> width) const;

    std::vector<ColumnKind> columns_;
    std::vector<std::vector<Cell>> rows_;
};

}  // namespace brindle
