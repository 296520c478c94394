#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// How many columns of a terminal the text takes: two for wide characters (East Asian Width, UAX #11), none
/// for marks that combine with the character before.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

/// As much of the text's beginning, or of its end, as fits into so many columns.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t columns);
[[nodiscard]] std::string endOfWidth(std::string_view text, std::size_t columns);

}  // namespace brindle
