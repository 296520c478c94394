#include "model/UserLocale.h"

#include <unicode/locid.h>

namespace brindle {

std::string userLocale() {
    const icu::Locale& locale = icu::Locale::getDefault();
    const std::string name = locale.getName();
    return name.empty() || name.starts_with("en_US_POSIX") || name == "c" ? "en" : name;
}

}  // namespace brindle
