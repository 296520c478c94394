#pragma once

#include <cstdint>
#include <fmt/format.h>
#include <string>

namespace brindle {

/// A text in the user's language, from the catalogue "brindle"; the English text itself where the
/// catalogue has none. The result lives as long as the process.
[[nodiscard]] const char* translated(const char* text);

/// The form of a counted text that fits `count` ("{} file", "{} files").
[[nodiscard]] const char* translatedCount(const char* one, const char* many, std::int64_t count);

/// A translated text with its places filled in; they may stand in another order than in English.
template <class... Values>
[[nodiscard]] std::string filled(const char* text, const Values&... values) {
    return fmt::format(fmt::runtime(text), values...);
}

}  // namespace brindle
