#include "export/StorageStatement.h"

#include "model/Utf8.h"

#include <charconv>
#include <limits>

namespace brindle::storageStatement {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view formulaBeginnings = "=+-@\t\r";

constexpr Row columnNames = {"Date",   "Observed at", "File",   "Folder", "Path", "Change in bytes",
                             "Action", "Location",    "Source", "Files"};

/// What a text needs before it can be a cell.
struct Needs {
    bool quotes = false;
    bool aLookAtItsEncoding = false;
};

Needs needsOf(std::string_view text) {
    Needs needs;
    for (const char c : text) {
        needs.quotes |= c == ',' || c == '"' || c == '\n' || c == '\r';
        needs.aLookAtItsEncoding |= static_cast<unsigned char>(c) >= 0x80;
    }
    return needs;
}

void appendDoublingQuotes(std::string_view text, std::string& to) {
    for (const char c : text) to.append(c == '"' ? 2 : 1, c);
}

void appendText(std::string_view text, std::string& to) {
    const Needs needs = needsOf(text);
    if (needs.aLookAtItsEncoding && !isUtf8(text)) return appendText(repairedUtf8(text), to);
    if (needs.quotes) to += '"';
    if (!text.empty() && formulaBeginnings.find(text.front()) != std::string_view::npos) to += '\'';
    if (needs.quotes) {
        appendDoublingQuotes(text, to);
        to += '"';
    } else {
        to += text;
    }
}

void appendNumber(std::int64_t number, std::string& to) {
    std::array<char, std::numeric_limits<std::int64_t>::digits10 + 2> digits{};
    to.append(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
}

void append(const Cell& cell, std::string& to) {
    if (const auto* text = std::get_if<std::string_view>(&cell))
        appendText(*text, to);
    else
        appendNumber(std::get<std::int64_t>(cell), to);
}

}  // namespace

std::string fileName(const LocalDay& lastDay, bool isExample) {
    return (isExample ? "Brindle-example-" : "Brindle-") + lastDay.text() + ".csv";
}

std::string headerLine() {
    std::string line;
    appendLine(columnNames, line);
    return line;
}

std::string encoded(const Cell& cell) {
    std::string text;
    append(cell, text);
    return text;
}

void appendLine(const Row& row, std::string& to) {
    bool isFirst = true;
    for (const Cell& cell : row) {
        if (!isFirst) to += ',';
        isFirst = false;
        append(cell, to);
    }
    to += lineEnd;
}

}  // namespace brindle::storageStatement
