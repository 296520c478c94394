#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace brindle {

/// The scale of a chart of byte amounts: a few lines at round amounts, the lowest and the highest of which
/// are its ends.
struct ChartScale {
    struct Line {
        std::int64_t bytes = 0;
        std::string text;  // in one unit with all others

        bool operator==(const Line&) const = default;
    };

    std::vector<Line> lines;  // from low to high, at least two

    bool operator==(const ChartScale&) const = default;

    /// Where an amount lies between the ends: 0 at the low one, 1 at the high one, never outside.
    [[nodiscard]] double place(std::int64_t bytes) const;
};

/// The scale of changes, with a line at zero and the sign before every other text. `freed` is a magnitude.
[[nodiscard]] ChartScale changeScale(std::int64_t mostAdded, std::int64_t mostFreed);

/// The scale of sizes from `least` to `most`. It does not begin at zero, but spans a tenth of them at least,
/// so that what hardly changes looks like it.
[[nodiscard]] ChartScale sizeScale(std::int64_t least, std::int64_t most);

}  // namespace brindle
