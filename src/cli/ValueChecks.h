#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

// What the values of options are held against: the library's own checks object in words for programmers.

namespace brindle {

/// A whole number that is not less than this.
[[nodiscard]] CLI::Validator wholeNumberFrom(int least);

/// One of these words.
[[nodiscard]] CLI::Validator oneOf(const std::vector<std::string>& words);

}  // namespace brindle
