#pragma once

#include <string>
#include <string_view>

namespace brindle {

[[nodiscard]] bool isUtf8(std::string_view bytes);

/// The bytes with U+FFFD in place of what is not UTF-8: one for each longest beginning of a character, as
/// other programs decode it too.
[[nodiscard]] std::string repairedUtf8(std::string_view bytes);

}  // namespace brindle
