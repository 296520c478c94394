#include "ui/theme/Palette.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace brindle {
namespace {

struct Appearances {
    const char* name;
    ColorScheme scheme;
    bool isContrastIncreased;

    [[nodiscard]] std::uint32_t value(ColorToken token) const {
        return themeColor(token).value(scheme, isContrastIncreased);
    }
};

constexpr Appearances everyAppearance[] = {{"dark", ColorScheme::dark, false},
                                           {"light", ColorScheme::light, false},
                                           {"dark, increased", ColorScheme::dark, true},
                                           {"light, increased", ColorScheme::light, true}};

double leastContrast(ContrastUse use, bool isContrastIncreased) {
    switch (use) {
        case ContrastUse::text:
            return isContrastIncreased ? 7 : 4.5;
        case ContrastUse::mark:
            return isContrastIncreased ? 4.5 : 3;
        case ContrastUse::decoration:
            return 1;
    }
    return 21;
}

TEST(Palette, ContrastIsThatOfTheWebGuidelines) {
    EXPECT_DOUBLE_EQ(contrastRatio(0x000000, 0xFFFFFF), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(0xFFFFFF, 0x000000), 21);
    EXPECT_NEAR(contrastRatio(0x777777, 0xFFFFFF), 4.478, 0.001);
    EXPECT_NEAR(contrastRatio(0xFF0000, 0xFFFFFF), 3.998, 0.001);
}

TEST(Palette, EverythingThatIsDrawnCanBeReadOnEveryGround) {
    for (const Appearances& appearance : everyAppearance)
        for (const ContrastRule& rule : contrastRules())
            for (const ColorToken drawn : rule.drawn)
                for (const ColorToken ground : rule.grounds)
                    EXPECT_GE(contrastRatio(appearance.value(drawn), appearance.value(ground)),
                              leastContrast(rule.use, appearance.isContrastIncreased))
                        << palette()[static_cast<std::size_t>(drawn)].name << " on "
                        << palette()[static_cast<std::size_t>(ground)].name << ", " << appearance.name;
}

TEST(Palette, NoTokenIsForgotten) {
    std::set<ColorToken> ruled;
    for (const ContrastRule& rule : contrastRules()) {
        ruled.insert(rule.drawn.begin(), rule.drawn.end());
        ruled.insert(rule.grounds.begin(), rule.grounds.end());
    }
    for (const PaletteEntry& entry : palette())
        EXPECT_TRUE(ruled.contains(entry.token)) << entry.name << " has no rule of contrast";
}

TEST(Palette, AddedAndFreedDifferInGreyToo) {
    for (const Appearances& appearance : everyAppearance)
        EXPECT_GE(contrastRatio(appearance.value(ColorToken::added), appearance.value(ColorToken::freed)),
                  1.5)
            << appearance.name;
}

TEST(Palette, ADayThatChangedMoreStandsOutMore) {
    for (const Appearances& appearance : everyAppearance)
        for (const int direction : {-1, 1})
            for (int step = 1; step <= 4; ++step) {
                const auto strength = [&](int of) {
                    return contrastRatio(appearance.value(netToken(of * direction)),
                                         appearance.value(ColorToken::text));
                };
                EXPECT_LT(strength(step), strength(step - 1))
                    << appearance.name << ", step " << step * direction;
            }
    EXPECT_EQ(netToken(-9), netToken(-4));
    EXPECT_EQ(netToken(9), netToken(4));
}

TEST(ThemeColor, IncreasedContrastTakesItsOwnValuesWhereThereAreSome) {
    constexpr ThemeColor plain{0x102030, 0xA0B0C0, {}, {}};
    constexpr ThemeColor both{0x102030, 0xA0B0C0, 0x000000, 0xFFFFFF};
    for (const ColorScheme scheme : {ColorScheme::dark, ColorScheme::light})
        EXPECT_EQ(plain.value(scheme, true), plain.value(scheme, false));
    EXPECT_EQ(both.value(ColorScheme::dark, false), 0x102030U);
    EXPECT_EQ(both.value(ColorScheme::dark, true), 0x000000U);
    EXPECT_EQ(both.value(ColorScheme::light, false), 0xA0B0C0U);
    EXPECT_EQ(both.value(ColorScheme::light, true), 0xFFFFFFU);
}

}  // namespace
}  // namespace brindle
