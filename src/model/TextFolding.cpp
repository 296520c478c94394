#include "model/TextFolding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

namespace brindle {
namespace {

/// Nothing for bytes that are not UTF-8.
std::optional<std::u16string> decoded(std::string_view utf8) {
    std::u16string text(utf8.size(), u'\0');  // never shorter than needed
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8(text.data(), static_cast<std::int32_t>(text.size()), &length, utf8.data(),
                  static_cast<std::int32_t>(utf8.size()), &status);
    if (U_FAILURE(status)) return {};
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    const auto left = decoded(a);
    const auto right = decoded(b);
    if (!left || !right) return a == b;
    UErrorCode status = U_ZERO_ERROR;
    return u_strCaseCompare(left->data(), static_cast<std::int32_t>(left->size()), right->data(),
                            static_cast<std::int32_t>(right->size()), U_FOLD_CASE_DEFAULT, &status) == 0;
}

}  // namespace brindle
