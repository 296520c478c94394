#include "model/DisplayWidth.h"

#include <cstdint>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace brindle {
namespace {

icu::UnicodeString decoded(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::size_t widthOf(UChar32 c) {
    constexpr std::uint32_t combining = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK;
    if ((U_GET_GC_MASK(c) & combining) != 0) return 0;
    const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    const icu::UnicodeString characters = decoded(text);
    std::size_t width = 0;
    for (std::int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1))
        width += widthOf(characters.char32At(i));
    return width;
}

std::string cutToWidth(std::string_view text, std::size_t columns) {
    const icu::UnicodeString characters = decoded(text);
    std::size_t width = 0;
    std::int32_t end = 0;
    for (; end < characters.length(); end = characters.moveIndex32(end, 1)) {
        width += widthOf(characters.char32At(end));
        if (width > columns) break;
    }
    std::string cut;
    return characters.tempSubString(0, end).toUTF8String(cut);
}

std::string endOfWidth(std::string_view text, std::size_t columns) {
    const icu::UnicodeString characters = decoded(text);
    std::size_t width = 0;
    std::int32_t begin = characters.length();  // of what fits and has a character of its own to combine with
    for (std::int32_t i = begin; i > 0;) {
        i = characters.moveIndex32(i, -1);
        const std::size_t own = widthOf(characters.char32At(i));
        width += own;
        if (width > columns) break;
        if (own > 0) begin = i;
    }
    std::string end;
    return characters.tempSubString(begin).toUTF8String(end);
}

}  // namespace brindle
