#include "model/FileNameText.h"

#include "model/NameIsolation.h"

#include <cstdint>
#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace brindle {
namespace {

bool isIsolating = false;

bool isHarmful(UChar32 c) {
    switch (u_charType(c)) {
        case U_CONTROL_CHAR:
        case U_LINE_SEPARATOR:
        case U_PARAGRAPH_SEPARATOR:
            return true;
        default:
            return u_hasBinaryProperty(c, UCHAR_BIDI_CONTROL) != 0;
    }
}

std::string escaped(UChar32 c) {
    switch (c) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    const auto code = static_cast<std::uint32_t>(c);
    return code < 0x100 ? fmt::format("\\x{:02x}", code) : fmt::format("\\u{:04x}", code);
}

}  // namespace

std::string fileNameText(std::string_view bytes) {
    // The decoding itself puts U+FFFD for what is not UTF-8.
    const icu::UnicodeString name =
        icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())});
    icu::UnicodeString shown;
    for (std::int32_t i = 0; i < name.length(); i = name.moveIndex32(i, 1)) {
        const UChar32 c = name.char32At(i);
        if (isHarmful(c))
            shown.append(icu::UnicodeString::fromUTF8(escaped(c)));
        else
            shown.append(c);
    }
    std::string text;
    shown.toUTF8String(text);
    return isIsolating ? "\u2068" + text + "\u2069" : text;
}

void isolateFileNames(bool areIsolated) {
    isIsolating = areIsolated;
}

}  // namespace brindle
