#pragma once

#include <string>
#include <string_view>

namespace brindle {

/// The text as an SQL string literal, for the few statements that take no parameters.
[[nodiscard]] inline std::string textLiteral(std::string_view text) {
    std::string literal = "'";
    for (const char c : text) literal.append(c == '\'' ? 2 : 1, c);
    return literal + "'";
}

}  // namespace brindle
