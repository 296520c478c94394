#include "model/TextSearch.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

namespace brindle {
namespace {

struct SearchCase {
    const char* text;
    std::string name;
    bool isFound;
    const char* locale = "en_US";
};

TEST(TextSearch, FindsWhateverTheCaseAndTheDiacritics) {
    const SearchCase cases[] = {
        {"photos", "Photos Library.photoslibrary", true},
        {"LIBRARY.p", "Photos Library.photoslibrary", true},
        {"photos ", "Photos.app", true},    // the ends of what is typed do not count,
        {"os li", "Photos Library", true},  // the middle does
        {"osli", "Photos Library", false},
        {"\u00a0\u2029 \n", "anything", true},
        {"x", "", false},
        {"resume", "R\u00e9sum\u00e9.pdf", true},
        {"R\u00c9SUM\u00c9", "resume.pdf", true},
        {"re\u0301sume", "R\u00c9SUM\u00c9", true},  // composed or not is one
        {"\u1ecd\u0301", "o", true},                 // two marks on one letter
        {"e", "\u00e8\u00e9\u00ea", true},
        {"strasse", "Hauptstra\u00dfe 5", true},
        {"STRA\u00dfE", "strasse", true},
        {"\u03c3\u03b1\u03c2", "\u03a3\u0391\u03a3", true},  // Greek has two small sigmas
        {"\u0438", "\u0439", true},
        {"\u2764", "I \u2764\ufe0f you", true},   // a heart, and one that asks for colour
        {"\uac00", "\uac01", false},              // Hangul: another syllable, which begins alike
        {"\u0e01\u0e34", "\u0e01\u0e38", false},  // Thai: a vowel is no diacritic
        {"\u00e9", "plain", false},
        {"\xff",
         "bad\xfe"
         "end",
         true},  // both are shown as U+FFFD
        {"end",
         "bad\xfe"
         "end",
         true},
        {"b\u00c0D",
         "bad\xfe"
         "end",
         true},
        {"end", std::string(400, 'x') + "END", true},  // longer than a file system's names
        {"ends", std::string(400, 'x') + "END", false},
        // "i" and its dot. Turkish has two letters, elsewhere the dot is a diacritic.
        {"istanbul", "\u0130stanbul", true},
        {"istanbul", "I\u0307STANBUL", true},
        {"istanbul", "ISTANBUL", true},
        {"istanbul", "\u0131stanbul", false},
        {"istanbul", "\u0130STANBUL", true, "tr_TR"},
        {"istanbul", "I\u0307STANBUL", true, "tr_TR"},
        {"istanbul", "ISTANBUL", false, "tr_TR"},
        {"\u0131lk", "ILK.txt", true, "tr_TR"},
        {"ILK", "\u0131lk.txt", true, "az_AZ"},
        {"photos", "PHOTOS", true, "tr_TR"},
    };
    for (const auto& [text, name, isFound, locale] : cases)
        EXPECT_EQ(TextSearch(text, locale).isIn(name), isFound) << text << " in " << name << ", " << locale;
    EXPECT_TRUE(TextSearch(" \t\u2003", "en").isEmpty());
    EXPECT_FALSE(TextSearch(" . ", "en").isEmpty());
}

TEST(TextSearch, FindsEveryCharacterInNamesShortAndLong) {
    // Short names are folded character by character, long ones as a whole: both must come to the same.
    for (const char* locale : {"en", "tr"})
        for (int c = 0x21; c < 0x3500; ++c) {
            std::string character;
            icu::UnicodeString(UChar32{c}).toUTF8String(character);
            const TextSearch search(character, locale);
            EXPECT_TRUE(search.isIn("a" + character + "b")) << std::hex << c << locale;
            EXPECT_TRUE(search.isIn(std::string(300, 'a') + character + "b")) << std::hex << c << locale;
        }
}

}  // namespace
}  // namespace brindle
