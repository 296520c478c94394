#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace brindle {

/// What is wrong with a command line that could not be parsed, in a sentence for the user.
[[nodiscard]] std::string usageSentence(const CLI::App& app, const CLI::ParseError& error);

}  // namespace brindle
