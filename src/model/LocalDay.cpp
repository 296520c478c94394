#include "model/LocalDay.h"

#include <charconv>
#include <fmt/format.h>

namespace brindle {

std::string LocalDay::text() const {
    return fmt::format("{:04}-{:02}-{:02}", year, month, day);
}

std::optional<LocalDay> LocalDay::parse(std::string_view text) {
    LocalDay day;
    const auto number = [&text](std::size_t length, int& value) {
        const char* end = text.data() + length;
        if (text.size() < length || text.front() < '0') return false;
        if (const auto [stop, error] = std::from_chars(text.data(), end, value);
            error != std::errc{} || stop != end)
            return false;
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
