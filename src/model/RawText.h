#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace brindle {

/// One row of the table that ties an enumeration to the texts it is stored under.
template <class Case>
struct RawTextRow {
    Case value;
    std::string_view text;
};

template <class Case>
constexpr std::string_view rawTextOf(std::span<const RawTextRow<Case>> rows, Case value) {
    for (const auto& row : rows)
        if (row.value == value) return row.text;
    return {};
}

template <class Case>
constexpr std::optional<Case> caseOf(std::span<const RawTextRow<Case>> rows, std::string_view text) {
    for (const auto& row : rows)
        if (row.text == text) return row.value;
    return {};
}

}  // namespace brindle
