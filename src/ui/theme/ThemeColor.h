#pragma once

#include <cstdint>
#include <optional>

namespace brindle {

enum class ColorScheme { dark, light };

/// One colour of the interface, as 0xRRGGBB, in each appearance.
struct ThemeColor {
    std::uint32_t dark = 0;
    std::uint32_t light = 0;
    std::optional<std::uint32_t> darkIncreased;   // instead of `dark` when the system asks for more contrast
    std::optional<std::uint32_t> lightIncreased;  // likewise instead of `light`

    /// 0xRRGGBB, opaque, sRGB.
    [[nodiscard]] constexpr std::uint32_t value(ColorScheme scheme, bool isContrastIncreased) const {
        const bool isDark = scheme == ColorScheme::dark;
        const std::uint32_t normal = isDark ? dark : light;
        return isContrastIncreased ? (isDark ? darkIncreased : lightIncreased).value_or(normal) : normal;
    }

    bool operator==(const ThemeColor&) const = default;
};

}  // namespace brindle
