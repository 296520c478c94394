#include "model/LocalDay.h"

#include <fmt/format.h>

namespace brindle {

std::string LocalDay::text() const {
    return fmt::format("{:04}-{:02}-{:02}", year, month, day);
}

std::optional<LocalDay> LocalDay::parse(std::string_view text) {
    LocalDay day;
    // Digits alone, and at most nine: much less work than std::from_chars, in what every row is read with.
    const auto number = [&text](std::size_t length, int& value) {
        if (text.size() < length) return false;
        value = 0;
        for (const char digit : text.substr(0, length)) {
            if (digit < '0' || digit > '9') return false;
            value = value * 10 + (digit - '0');
        }
        text.remove_prefix(length);
        return true;
    };
    const auto dash = [&text] {
        if (!text.starts_with('-')) return false;
        text.remove_prefix(1);
        return true;
    };
    const auto yearLength = text.find('-');
    if (yearLength == std::string_view::npos || yearLength < 4 || yearLength > 9) return {};
    if (!number(yearLength, day.year) || !dash() || !number(2, day.month) || !dash() || !number(2, day.day))
        return {};
    if (!text.empty() || day.month < 1 || day.month > 12 || day.day < 1 || day.day > 31) return {};
    return day;
}

}  // namespace brindle
