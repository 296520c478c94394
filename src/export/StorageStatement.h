#pragma once

#include "model/LocalDay.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

// The form of a storage statement: a CSV file in UTF-8 that begins with a byte-order mark, whose lines end
// with CR LF, with one line of column names and then one line a change. Its words are never translated, so
// that a spreadsheet made from it goes on working in another language.

namespace brindle::storageStatement {

/// One value of a row: a text as the file system has it, or a number. It does not own the text.
using Cell = std::variant<std::string_view, std::int64_t>;

/// Date, Observed at, File, Folder, Path, Change in bytes, Action, Location, Source, Files.
using Row = std::array<Cell, 10>;

inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// What a statement is called unless the user says otherwise: "Brindle-2026-03-07.csv".
[[nodiscard]] std::string fileName(const LocalDay& lastDay, bool isExample);

[[nodiscard]] std::string headerLine();

/// A number in plain digits; a text so that it comes back from the file as it went in, and so that no
/// spreadsheet takes it for a formula: one that begins with "=", "+", "-", "@", a tab or a carriage return
/// has an apostrophe before it. Bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string encoded(const Cell& cell);

/// The cells of a row, each encoded, as one line with its end.
void appendLine(const Row& row, std::string& to);

}  // namespace brindle::storageStatement
