#include "export/StorageStatement.h"

#include "model/Utf8.h"

#include <charconv>
#include <cstddef>
#include <limits>

namespace brindle::storageStatement {
namespace {

constexpr std::string_view lineEnd = "\r\n";

constexpr Row columnNames = {"Date",   "Observed at", "File",   "Folder", "Path", "Change in bytes",
                             "Action", "Location",    "Source", "Files"};

// What the bytes of a text ask for; the last only where it is the first byte.
enum Need : unsigned char { nothing = 0, quotes = 1, lookAtEncoding = 2, apostrophe = 4 };

constexpr auto needOfByte = [] {
    std::array<unsigned char, 256> needs{};
    for (std::size_t byte = 0x80; byte < needs.size(); ++byte) needs.at(byte) = lookAtEncoding;
    for (const char c : {',', '"', '\n', '\r'}) needs.at(static_cast<std::size_t>(c)) |= quotes;
    for (const char c : {'=', '+', '-', '@', '\t', '\r'}) needs.at(static_cast<std::size_t>(c)) |= apostrophe;
    return needs;
}();

unsigned needOf(char c) {
    return needOfByte[static_cast<unsigned char>(c)];
}

unsigned needsOf(std::string_view text) {
    unsigned needs = nothing;
    for (const char c : text) needs |= needOf(c);
    return needs;
}

void appendDoublingQuotes(std::string_view text, std::string& to) {
    for (const char c : text) to.append(c == '"' ? 2 : 1, c);
}

void appendText(std::string_view text, std::string& to) {
    const unsigned needs = needsOf(text);
    if ((needs & lookAtEncoding) != 0 && !isUtf8(text)) return appendText(repairedUtf8(text), to);
    const bool isQuoted = (needs & quotes) != 0;
    if (isQuoted) to += '"';
    if (!text.empty() && (needOf(text.front()) & apostrophe) != 0) to += '\'';
    if (isQuoted) {
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
