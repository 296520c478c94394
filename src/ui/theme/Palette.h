#pragma once

#include "ui/theme/ThemeColor.h"

#include <span>
#include <string_view>

namespace brindle {

/// What a colour is for. Everything that is drawn names one of these.
enum class ColorToken {
    ground,         // the window
    surface,        // cards
    raised,         // what the pointer is over, menus, tooltips
    selection,      // a selected row
    line,           // separators and the borders of cards
    controlLine,    // the border that tells where a field or a button is
    text,           // prose, figures, headings
    textSecondary,  // what may be overlooked
    accent,         // the default button, links, where the user is
    onAccent,
    focusRing,
    added,
    freed,
    estimated,
    warning,
    barTrack,          // the empty part of a bar
    filesTone,         // a drive's used space: files
    trashTone,         // the trash
    notVisibleTone,    // what no walk sees
    otherVolumesTone,  // others on the same pool
    netFreed4,         // the ground of a calendar day, by its net change: from much freed
    netFreed3,
    netFreed2,
    netFreed1,
    netNone,
    netAdded1,
    netAdded2,
    netAdded3,
    netAdded4,  // to much added
};

struct PaletteEntry {
    ColorToken token;
    std::string_view name;
    ThemeColor color;
};

/// Every token once, in the order of the enumeration.
[[nodiscard]] std::span<const PaletteEntry> palette();

[[nodiscard]] const ThemeColor& themeColor(ColorToken token);

/// The ground of a day, from -4 (much was freed) to 4 (much was added). Steps beyond are those at the ends.
[[nodiscard]] ColorToken netToken(int step);

enum class ContrastUse {
    text,        // 4.5:1, with increased contrast 7:1
    mark,        // 3:1, with increased contrast 4.5:1: bars, borders of controls, the focus ring
    decoration,  // nothing is lost with it
};

/// What is drawn on what: each of `drawn` on each of `grounds`.
struct ContrastRule {
    ContrastUse use;
    std::span<const ColorToken> drawn;
    std::span<const ColorToken> grounds;
};

/// Every token stands in a rule at least once, drawn or as a ground.
[[nodiscard]] std::span<const ContrastRule> contrastRules();

/// The contrast of two colours 0xRRGGBB, from 1 to 21.
[[nodiscard]] double contrastRatio(std::uint32_t one, std::uint32_t other);

}  // namespace brindle
