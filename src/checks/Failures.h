#pragma once

#include <exception>
#include <string>

namespace brindle {

/// What went wrong with the history, in one sentence for a person. `directory` is the data directory.
[[nodiscard]] std::string failureFinding(const std::exception& error, const std::string& directory);

/// The same, and how a damaged history is recovered in a terminal.
[[nodiscard]] std::string failureSentence(const std::exception& error, const std::string& directory);

}  // namespace brindle
