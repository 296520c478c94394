#include "model/Utf8.h"

#include <cstdint>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

namespace brindle {

bool isUtf8(std::string_view bytes) {
    // Only measured, into no text at all, so that the usual outcome is an overflow.
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8(nullptr, 0, &length, bytes.data(), static_cast<std::int32_t>(bytes.size()), &status);
    return status != U_INVALID_CHAR_FOUND;
}

std::string repairedUtf8(std::string_view bytes) {
    std::string text;
    return icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())})
        .toUTF8String(text);
}

}  // namespace brindle
