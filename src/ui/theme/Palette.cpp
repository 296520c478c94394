#include "ui/theme/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace brindle {
namespace {

// Warm greys and one amber. Added is a clay red and freed a cool cyan that is always the lighter of the two
// on a dark ground and the darker on a light one, so that they differ for every eye and on paper.
// clang-format off
constexpr auto table = std::to_array<PaletteEntry>({
    // token, its name, {dark, light, dark and light with increased contrast}
    {ColorToken::ground, "ground", {0x171411, 0xF6F2EC, 0x000000, 0xFFFFFF}},
    {ColorToken::surface, "surface", {0x211D19, 0xFFFDFA, 0x0E0C0A, 0xFFFFFF}},
    {ColorToken::raised, "raised", {0x2E2822, 0xEFE8DD, 0x231E19, 0xEFE9E0}},
    {ColorToken::selection, "selection", {0x3E301B, 0xF6E4C4, 0x3B2B0E, 0xFFE9C2}},
    {ColorToken::line, "line", {0x3B342C, 0xE0D7C9, 0x8C8173, 0x7A6F61}},
    {ColorToken::controlLine, "controlLine", {0x8B8072, 0x8B7F6E, 0xB8AD9E, 0x5A5044}},
    {ColorToken::text, "text", {0xF4EFE8, 0x231D16, 0xFFFFFF, 0x000000}},
    {ColorToken::textSecondary, "textSecondary", {0xB9AFA1, 0x645A4D, 0xE3DCD1, 0x3A332A}},
    {ColorToken::accent, "accent", {0xE5A84F, 0x8A5608, 0xFFC266, 0x5F3A00}},
    {ColorToken::onAccent, "onAccent", {0x1D1508, 0xFFFFFF, 0x000000, 0xFFFFFF}},
    {ColorToken::focusRing, "focusRing", {0xFFC46B, 0x754800, 0xFFD694, 0x5F3A00}},
    {ColorToken::added, "added", {0xEE8565, 0xA93C1A, 0xFFB096, 0x822908}},
    {ColorToken::freed, "freed", {0x8BE3E6, 0x00454F, 0xC9FBFD, 0x00272E}},
    {ColorToken::estimated, "estimated", {0xBCA8E8, 0x6B4BA3, 0xD9CCFA, 0x47297F}},
    {ColorToken::warning, "warning", {0xF2D45C, 0x735900, 0xFFE680, 0x4F3C00}},
    {ColorToken::barTrack, "barTrack", {0x3B342C, 0xE6DED1, 0x3B342C, 0xDDD4C6}},
    {ColorToken::filesTone, "filesTone", {0xE5A84F, 0xA86C10, 0xFFC266, 0x7A4C00}},
    {ColorToken::trashTone, "trashTone", {0xC7745A, 0x9C4A2C, 0xE89A80, 0x7D2508}},
    {ColorToken::notVisibleTone, "notVisibleTone", {0xA79C8D, 0x7D7264, 0xCFC6B8, 0x5A5044}},
    {ColorToken::otherVolumesTone, "otherVolumesTone", {0x7D93C9, 0x4F66A0, 0xA9BCEB, 0x2F4480}},
    {ColorToken::netFreed4, "netFreed4", {0x1E6B76, 0x7CC4CC, 0x17565F, 0x8FD3DA}},
    {ColorToken::netFreed3, "netFreed3", {0x1F545C, 0xA3D7DC, 0x14444B, 0xAEE0E5}},
    {ColorToken::netFreed2, "netFreed2", {0x213F44, 0xC5E6E9, 0x12343A, 0xCDEBEE}},
    {ColorToken::netFreed1, "netFreed1", {0x222F31, 0xDCEFF0, 0x10252A, 0xE0F3F5}},
    {ColorToken::netNone, "netNone", {0x2A2621, 0xF1ECE4, 0x1B1815, 0xF5F2ED}},
    {ColorToken::netAdded1, "netAdded1", {0x3A2620, 0xFBE6DE, 0x2C1812, 0xFFECE5}},
    {ColorToken::netAdded2, "netAdded2", {0x52291D, 0xF6CDBF, 0x441E12, 0xFAD5C8}},
    {ColorToken::netAdded3, "netAdded3", {0x6F301D, 0xEFB09B, 0x5C2512, 0xF4BBA8}},
    {ColorToken::netAdded4, "netAdded4", {0x90391D, 0xE8927A, 0x742C14, 0xEDA18B}},
});
// clang-format on

constexpr bool isInOrder() {
    for (std::size_t index = 0; index < table.size(); ++index)
        if (static_cast<std::size_t>(table[index].token) != index) return false;
    return true;
}
static_assert(isInOrder());

using enum ColorToken;

constexpr std::array readGrounds{ground, surface, raised, selection};
constexpr std::array netGrounds{netFreed4, netFreed3, netFreed2, netFreed1, netNone,
                                netAdded1, netAdded2, netAdded3, netAdded4};
constexpr std::array barGrounds{ground, surface, barTrack};
constexpr std::array accentGrounds{accent};

constexpr std::array texts{text, textSecondary, accent, added, freed, estimated, warning};
constexpr std::array textsOnNet{text};
constexpr std::array textsOnAccent{onAccent};
constexpr std::array outlines{focusRing, controlLine};
constexpr std::array outlinesOnNet{focusRing, text};
constexpr std::array bars{added,     freed,     estimated,      accent,
                          filesTone, trashTone, notVisibleTone, otherVolumesTone};
constexpr std::array separators{line};

constexpr auto rules = std::to_array<ContrastRule>({
    {ContrastUse::text, texts, readGrounds},
    {ContrastUse::text, textsOnNet, netGrounds},
    {ContrastUse::text, textsOnAccent, accentGrounds},
    {ContrastUse::mark, outlines, readGrounds},
    {ContrastUse::mark, outlinesOnNet, netGrounds},
    {ContrastUse::mark, bars, barGrounds},
    {ContrastUse::decoration, separators, readGrounds},
});

double luminance(std::uint32_t color) {
    const auto channel = [color](unsigned shift) {
        const double value = ((color >> shift) & 0xFFU) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(16) + 0.7152 * channel(8) + 0.0722 * channel(0);
}

}  // namespace

std::span<const PaletteEntry> palette() {
    return table;
}

const ThemeColor& themeColor(ColorToken token) {
    return table.at(static_cast<std::size_t>(token)).color;
}

ColorToken netToken(int step) {
    const int place = std::clamp(step, -4, 4) + 4;
    return netGrounds.at(static_cast<std::size_t>(place));
}

std::span<const ContrastRule> contrastRules() {
    return rules;
}

double contrastRatio(std::uint32_t one, std::uint32_t other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace brindle
