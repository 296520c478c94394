#include "model/Catalogues.h"

#include <libintl.h>
#include <string_view>
#include <unicode/locid.h>

namespace brindle {
namespace {

constexpr const char* domain = "brindle";

}  // namespace

void useCatalogues(const std::string& folder) {
    ::bindtextdomain(domain, folder.c_str());
    ::bind_textdomain_codeset(domain, "UTF-8");
    const std::string language = textLanguage();
    if (language == "en" || language == icu::Locale::getDefault().getLanguage()) return;
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale(language.c_str()), status);
}

std::string textLanguage() {
    // A catalogue's translation of the empty text is its header.
    constexpr std::string_view key = "\nLanguage: ";
    const std::string_view header = dgettext(domain, "");
    const std::size_t at = header.find(key);
    if (at == std::string_view::npos) return "en";
    const std::string_view value = header.substr(at + key.size());
    return std::string(value.substr(0, value.find('\n')));
}

}  // namespace brindle
