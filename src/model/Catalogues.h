#pragma once

#include <string>

namespace brindle {

/// Takes texts from the catalogues below `folder` (LANGUAGE/LC_MESSAGES/brindle.mo), in the language that the
/// environment asks for. Numbers and dates that the locale would write in another language follow the texts.
/// For programs, once, after setlocale() and before they have a second thread.
void useCatalogues(const std::string& folder);

/// The language of the texts: "de"; "en" where no catalogue translates them.
[[nodiscard]] std::string textLanguage();

}  // namespace brindle
