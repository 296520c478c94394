#include "ui/theme/TextRoles.h"

#include <array>

namespace brindle {
namespace {

using enum TextWeight;

constexpr auto styles = std::to_array<TextStyle>({
    {BRText::wordmark, 18, semibold, false},
    {BRText::nav, 14, medium, false},
    {BRText::pageTitle, 24, semibold, false},
    {BRText::section, 16, semibold, false},
    {BRText::label, 12, medium, false},
    {BRText::body, 14, regular, false},
    {BRText::bodyEmphasis, 14, semibold, false},
    {BRText::secondary, 13, regular, false},
    {BRText::caption, 12, regular, false},
    {BRText::figureLarge, 40, semibold, true},
    {BRText::figure, 22, semibold, true},
    {BRText::figureSmall, 14, medium, true},
    {BRText::figureInline, 14, regular, true},
});

constexpr bool isInOrder() {
    for (std::size_t index = 0; index < styles.size(); ++index)
        if (static_cast<std::size_t>(styles[index].role) != index) return false;
    return true;
}
static_assert(isInOrder());

}  // namespace

const TextStyle& textStyle(BRText role) {
    return styles.at(static_cast<std::size_t>(role));
}

double textScale(TextSize size) {
    switch (size) {
        case TextSize::standard:
            return 1;
        case TextSize::large:
            return 1.15;
        case TextSize::extraLarge:
            return 1.3;
    }
    return 1;
}

}  // namespace brindle
