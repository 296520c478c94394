#include "cli/Table.h"

#include "cli/ShortPath.h"
#include "model/DisplayWidth.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"

#include <algorithm>
#include <numeric>

namespace brindle {
namespace {

constexpr std::size_t gap = 2;         // between columns, and in front of the first
constexpr std::size_t leastPath = 16;  // columns that a path has even where the terminal is too narrow

std::size_t widthOf(const Cell& cell) {
    std::size_t width = 0;
    for (const CellPart& part : cell.parts) width += displayWidth(part.text);
    return width;
}

}  // namespace

Cell amountCell(std::int64_t byteDelta) {
    TextStyle style = TextStyle::plain;
    if (byteDelta > 0) style = TextStyle::added;
    if (byteDelta < 0) style = TextStyle::freed;
    return {signedByteAmount(byteDelta), style};
}

Cell pathCell(std::string_view path) {
    return {fileNameText(path)};
}

void Table::print(Output& output) const {
    for (const std::string& line : lines(output, output.width())) output.line(line);
}

std::vector<std::string> Table::lines(const Output& output, std::optional<std::size_t> width) const {
    const auto widths = columnWidths(width);
    std::vector<std::string> lines;
    for (const auto& row : rows_) {
        std::string& line = lines.emplace_back();
        std::size_t blanks = 0;  // written only before something that follows
        for (std::size_t i = 0; i < row.size(); ++i) {
            auto parts = row[i].parts;
            if (columns_[i] == ColumnKind::path && !parts.empty()) {
                auto& path = parts.back().text;
                const std::size_t leadWidth = widthOf(row[i]) - displayWidth(path);
                path = shortPath(path, widths[i] - std::min(widths[i], leadWidth));
            }
            const std::size_t cellWidth = widthOf(Cell(parts));
            const std::size_t padding = widths[i] - std::min(widths[i], cellWidth);
            const bool isRight = columns_[i] == ColumnKind::figure;
            blanks += gap + (isRight ? padding : 0);
            if (cellWidth > 0) {
                line.append(blanks, ' ');
                for (const CellPart& part : parts) line += output.styled(part.style, part.text);
                blanks = 0;
            }
            if (!isRight) blanks += padding;
        }
    }
    return lines;
}

std::vector<std::size_t> Table::columnWidths(std::optional<std::size_t> width) const {
    std::vector<std::size_t> widths(columns_.size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], widthOf(row[i]));
    const auto path = std::ranges::find(columns_, ColumnKind::path);
    if (!width || path == columns_.end()) return widths;

    std::size_t& flexible = widths[static_cast<std::size_t>(path - columns_.begin())];
    const std::size_t others =
        std::accumulate(widths.begin(), widths.end(), gap * columns_.size()) - flexible;
    flexible = std::min(flexible, std::max(*width, others + leastPath) - others);
    return widths;
}

}  // namespace brindle
