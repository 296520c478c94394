#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// One calendar day in the user's calendar and time zone, without a time of day.
/// Arithmetic and labels belong to Calendar; order is (year, month, day).
struct LocalDay {
    int year = 1970;
    int month = 1;  // 1 to 12
    int day = 1;    // 1 to 31

    auto operator<=>(const LocalDay&) const = default;

    /// "2026-03-07": the form of every `local_day` column and of the statement. As text it sorts like
    /// the day, for years 0 to 9999.
    [[nodiscard]] std::string text() const;

    /// Reads the form of text(); nothing for any other text. Whether the day exists is not checked.
    [[nodiscard]] static std::optional<LocalDay> parse(std::string_view text);
};

}  // namespace brindle

template <>
struct std::hash<brindle::LocalDay> {
    std::size_t operator()(const brindle::LocalDay& day) const noexcept {
        return std::hash<int>{}((day.year * 16 + day.month) * 32 + day.day);
    }
};
