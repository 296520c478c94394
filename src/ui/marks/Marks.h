#pragma once

#include <array>

/// The marks as path strings, in drawing order.
namespace brindle::marks {

inline constexpr double brandGrid = 40;
inline constexpr std::array brandMark{
    "M3 5 H22 L37 20 L22 35 H3 V24 H12 V27 H19 L26 20 L19 13 H12 V16 H3 Z",
    "M3 18 H18 V22 H3 Z",
};

inline constexpr const char* menuBarGlyph =
    "M3 5 H22 L37 20 L22 35 H3 V24 H12 V27 H19 L26 20 L19 13 H12 V16 H3 Z";

inline constexpr double capacityGridWidth = 260;
inline constexpr double capacityGridHeight = 240;
inline constexpr std::array capacityIllustration{
    "M130 12 L238 74 V174 L130 236 L22 174 V74 Z",                                        // the outer box
    "M130 12 L130 236 M22 74 L238 174 M238 74 L22 174",                                   // its guide lines
    "M14 87 V68 L31 58 M229 58 L246 68 V87 M14 156 V175 L31 185 M229 185 L246 175 V156",  // corner brackets
    "M130 199 L208 154 L130 109 L52 154 Z",
    "M54 96 L130 140 L206 96 V113 L130 157 L54 113 Z",
    "M130 52 L206 96 L130 140 L54 96 Z",
    "M68 113 L88 125 M93 128 L100 132",
    "M130 71 L173 96 L130 121 L87 96 Z",
    "M130 81 L156 96 L130 111 L104 96 Z",
    "M130 90 L140 96 L130 102 L120 96 Z",
};

}  // namespace brindle::marks
