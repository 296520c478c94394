#include "model/TextSearch.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

namespace brindle {
namespace {

constexpr UChar32 replacement = 0xfffd;  // for bytes that are not UTF-8

void mustSucceed(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
}

bool isTurkic(const std::string& locale) {
    const std::string language = icu::Locale(locale.c_str()).getLanguage();
    return language == "tr" || language == "az";
}

icu::UnicodeString decodedText(std::string_view utf8) {
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

/// The folded forms of the characters that fold by themselves, whatever stands beside them. Nearly all names
/// consist of such, and there may be half a million names.
class FoldedCharacters {
public:
    static const FoldedCharacters& of(bool isTurkic) {
        if (isTurkic) {
            static const FoldedCharacters turkic(true);
            return turkic;
        }
        static const FoldedCharacters others(false);
        return others;
    }

    static constexpr std::size_t mostUnits = 3;

    /// Puts the folded form of `c` at `to`, where there is room for the most units, and gives its end; null
    /// where the neighbours have a say.
    char16_t* fold(char16_t c, char16_t* to) const {
        if (c < forms_.size()) {
            const Form& form = forms_[c];
            if (form.length > mostUnits) return nullptr;
            std::ranges::copy(form.units, to);  // all of them: faster than to see how many there are
            return to + form.length;
        }
        if (!isIdeographOrSyllable(c) && c != replacement) return nullptr;
        *to = c;
        return to + 1;
    }

private:
    struct Form {
        std::array<char16_t, mostUnits> units{};
        std::uint16_t length = mostUnits + 1;
    };

    explicit FoldedCharacters(bool isTurkic) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Normalizer2* composing = icu::Normalizer2::getNFCInstance(status);
        mustSucceed(status);
        for (std::size_t c = 0; c < forms_.size(); ++c) {
            const auto character = static_cast<UChar32>(c);
            if (composing->hasBoundaryBefore(character) == 0) continue;
            const icu::UnicodeString form = folded(character, isTurkic);
            if (form.length() > static_cast<std::int32_t>(mostUnits)) continue;
            forms_[c].length = static_cast<std::uint16_t>(form.length());
            std::copy_n(form.getBuffer(), form.length(), forms_[c].units.begin());
        }
    }

    /// Chinese characters and Hangul syllables have neither case nor diacritics.
    static bool isIdeographOrSyllable(char16_t c) {
        return (c >= 0x3400 && c < 0xa000) || (c >= 0xac00 && c < 0xd7a4);
    }

    std::array<Form, 0x3100> forms_;  // up to and with Kana
};

}  // namespace

TextSearch::TextSearch(std::string_view text, const std::string& locale) : isTurkic_(isTurkic(locale)) {
    const icu::UnicodeString sought = folded(trimmed(decodedText(text)), isTurkic_);
    folded_.assign(sought.getBuffer(), static_cast<std::size_t>(sought.length()));
}

bool TextSearch::isIn(std::string_view name) const {
    if (isEmpty()) return true;
    if (const auto isInShort = isInShortName(name)) return *isInShort;
    return folded(decodedText(name), isTurkic_)
               .indexOf(folded_.data(), static_cast<std::int32_t>(folded_.size()), 0) >= 0;
}

std::optional<bool> TextSearch::isInShortName(std::string_view name) const {
    std::array<char16_t, 256> units;
    std::array<char16_t, units.size() * FoldedCharacters::mostUnits> foldedUnits;
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(units.data(), static_cast<std::int32_t>(units.size()), &length, name.data(),
                         static_cast<std::int32_t>(name.size()), replacement, nullptr, &status);
    if (U_FAILURE(status)) return {};
    const FoldedCharacters& characters = FoldedCharacters::of(isTurkic_);
    char16_t* end = foldedUnits.data();
    for (std::int32_t i = 0; i < length; ++i) {
        end = characters.fold(units[static_cast<std::size_t>(i)], end);
        if (end == nullptr) return {};
    }
    return std::u16string_view(foldedUnits.data(), end).find(folded_) != std::u16string_view::npos;
}

}  // namespace brindle
