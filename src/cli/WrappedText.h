#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// A sentence as lines of at most so many columns, broken between words; a single line without `columns`. A
/// word that is longer stands on a line of its own.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, std::optional<std::size_t> columns);

}  // namespace brindle
