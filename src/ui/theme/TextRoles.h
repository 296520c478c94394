#pragma once

#include "settings/Preferences.h"

namespace brindle {

/// What a text is. Every text of the windows has one of these roles, and its font from it.
enum class BRText {
    wordmark,
    nav,
    pageTitle,
    section,
    label,
    body,
    bodyEmphasis,
    secondary,
    caption,
    figureLarge,  // numbers, from here on: byte amounts and counts
    figure,
    figureSmall,
    figureInline,
};

enum class TextWeight { regular = 400, medium = 500, semibold = 600 };

struct TextStyle {
    BRText role;
    int size;  // of the standard text size, in device-independent pixels
    TextWeight weight;
    bool isFigure;
};

[[nodiscard]] const TextStyle& textStyle(BRText role);

/// What the standard sizes are multiplied by, and every frame that holds text with them.
[[nodiscard]] double textScale(TextSize size);

}  // namespace brindle
