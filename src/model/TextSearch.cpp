#include "model/TextSearch.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>

namespace brindle {
namespace {

constexpr char16_t dotlessI = u'\u0131';
constexpr char narrowDotlessI = '\x80';  // the only folded form of an ASCII letter that is not ASCII

void mustSucceed(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
}

bool isTurkic(const std::string& locale) {
    const std::string language = icu::Locale(locale.c_str()).getLanguage();
    return language == "tr" || language == "az";
}

icu::UnicodeString decoded(std::string_view utf8) {
    return icu::UnicodeString::fromUTF8({utf8.data(), static_cast<std::int32_t>(utf8.size())});
}

icu::UnicodeString trimmed(const icu::UnicodeString& text) {
    std::int32_t begin = 0;
    std::int32_t end = text.length();
    // Every white space is one code unit.
    while (begin < end && u_isUWhiteSpace(text.charAt(begin)) != 0) ++begin;
    while (begin < end && u_isUWhiteSpace(text.charAt(end - 1)) != 0) --end;
    return text.tempSubStringBetween(begin, end);
}

/// The marks that a diacritic-insensitive search does not see. Vowel signs, of which some scripts' words
/// consist, are none.
const icu::UnicodeSet& diacritics() {
    static const icu::UnicodeSet set = [] {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeSet marks(u"[[:Mn:]&[[:Script=Inherited:][:Diacritic:]]]", status);
        mustSucceed(status);
        marks.freeze();
        return marks;
    }();
    return set;
}

icu::UnicodeString withoutDiacritics(const icu::UnicodeString& text) {
    icu::UnicodeString bare;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 c = text.char32At(i);
        if (!diacritics().contains(c)) bare.append(c);
    }
    return bare;
}

/// Composed first, since "İ" in two parts would lose its dot before its case is folded; and composed again at
/// the end, since a Hangul syllable in parts would be found in every other that begins like it.
icu::UnicodeString folded(const icu::UnicodeString& text, bool isTurkic) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* composing = icu::Normalizer2::getNFCInstance(status);
    const icu::Normalizer2* decomposing = icu::Normalizer2::getNFDInstance(status);
    mustSucceed(status);
    icu::UnicodeString composed = composing->normalize(text, status);
    composed.foldCase(isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    icu::UnicodeString bare =
        composing->normalize(withoutDiacritics(decomposing->normalize(composed, status)), status);
    mustSucceed(status);
    return bare;
}

std::optional<std::string> narrowed(std::u16string_view folded, bool isTurkic) {
    std::string narrow;
    for (const char16_t c : folded) {
        if (c < 0x80)
            narrow.push_back(static_cast<char>(c));
        else if (isTurkic && c == dotlessI)
            narrow.push_back(narrowDotlessI);
        else
            return {};
    }
    return narrow;
}

char foldedAscii(char c, bool isTurkic) {
    if (isTurkic && c == 'I') return narrowDotlessI;
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

TextSearch::TextSearch(std::string_view text, const std::string& locale) : isTurkic_(isTurkic(locale)) {
    const icu::UnicodeString sought = folded(trimmed(decoded(text)), isTurkic_);
    folded_.assign(sought.getBuffer(), static_cast<std::size_t>(sought.length()));
    narrow_ = narrowed(folded_, isTurkic_);
}

bool TextSearch::isIn(std::string_view name) const {
    if (isEmpty()) return true;
    // Nearly all names are short and ASCII, and there may be half a million of them.
    std::array<char, 256> narrowName;
    if (name.size() <= narrowName.size()) {
        unsigned char bits = 0;
        for (std::size_t i = 0; i < name.size(); ++i) {
            bits |= static_cast<unsigned char>(name[i]);
            narrowName[i] = foldedAscii(name[i], isTurkic_);
        }
        if (bits < 0x80)
            return narrow_ &&
                   std::string_view(narrowName.data(), name.size()).find(*narrow_) != std::string_view::npos;
    }
    return folded(decoded(name), isTurkic_)
               .indexOf(folded_.data(), static_cast<std::int32_t>(folded_.size()), 0) >= 0;
}

}  // namespace brindle
