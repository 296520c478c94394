#pragma once

#include <cstdint>
#include <string>

namespace brindle {

/// A text in the user's language, from the catalogue "brindle"; the English text itself where the
/// catalogue has none. The result lives as long as the process.
[[nodiscard]] const char* translated(const char* text);

/// The form of a counted text that fits `count` ("{} file", "{} files").
[[nodiscard]] const char* translatedCount(const char* one, const char* many, std::int64_t count);

/// Marks a text for the catalogue where it stands before it is shown: translated() is still to come.
[[nodiscard]] constexpr const char* translatable(const char* text) {
    return text;
}

/// Takes texts from the catalogues below `folder` (LANGUAGE/LC_MESSAGES/brindle.mo), in the language that the
/// environment asks for. Numbers and dates that the locale would write in another language follow the texts.
/// For programs, once, after setlocale() and before they have a second thread.
void useCatalogues(const std::string& folder);

/// The language of the texts: "de"; "en" where no catalogue translates them.
[[nodiscard]] std::string textLanguage();

}  // namespace brindle
