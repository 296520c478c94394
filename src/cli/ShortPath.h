#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// The path in at most so many columns. What is left out is marked "…": folders at its head ("…/2025/a.jpg"),
/// and only when its last name alone is too long, the middle of that. `path` is harmless to show.
[[nodiscard]] std::string shortPath(std::string_view path, std::size_t columns);

}  // namespace brindle
