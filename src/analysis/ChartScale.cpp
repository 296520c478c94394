#include "analysis/ChartScale.h"

#include "model/NumberText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace brindle {
namespace {

constexpr double intervalsOfChanges = 4;
constexpr double intervalsOfSizes = 2;  // of a lower chart
// Far above every disk, and no sum of two overflows.
constexpr std::int64_t largestShown = 1'000'000'000'000'000'000;

/// The least of 1, 2 and 5 times a power of ten that is no smaller.
std::int64_t roundStep(double least) {
    std::int64_t power = 1;
    while (static_cast<double>(power) * 10 <= least) power *= 10;
    for (const std::int64_t factor : {1, 2, 5})
        if (static_cast<double>(factor * power) >= least) return factor * power;
    return 10 * power;
}

std::int64_t roundedDown(std::int64_t bytes, std::int64_t step) {
    const std::int64_t rest = bytes % step;
    return rest < 0 ? bytes - rest - step : bytes - rest;
}

ChartScale scaleFrom(std::int64_t low, std::int64_t high, double intervals, bool isSigned) {
    const std::int64_t step = roundStep(static_cast<double>(high - low) / intervals);
    const std::int64_t first = roundedDown(low, step);
    const std::int64_t last = std::max(-roundedDown(-high, step), first + step);
    const std::int64_t largest = std::max(std::abs(first), std::abs(last));
    ChartScale scale;
    for (std::int64_t bytes = first; bytes <= last; bytes += step)
        scale.lines.push_back(
            {.bytes = bytes, .text = (isSigned && bytes > 0 ? "+" : "") + scaleAmount(bytes, step, largest)});
    return scale;
}

}  // namespace

double ChartScale::place(std::int64_t bytes) const {
    const auto low = static_cast<double>(lines.front().bytes);
    const auto high = static_cast<double>(lines.back().bytes);
    return std::clamp((static_cast<double>(bytes) - low) / (high - low), 0.0, 1.0);
}

ChartScale changeScale(std::int64_t mostAdded, std::int64_t mostFreed) {
    return scaleFrom(-std::min(mostFreed, largestShown), std::min(mostAdded, largestShown),
                     intervalsOfChanges, true);
}

ChartScale sizeScale(std::int64_t least, std::int64_t most) {
    const std::int64_t high = std::min(most, largestShown);
    const std::int64_t low = std::min(least, high);
    const std::int64_t missing = std::max<std::int64_t>(high / 10 - (high - low), 0);
    return scaleFrom(std::max<std::int64_t>(low - missing / 2, 0), high + missing / 2, intervalsOfSizes,
                     false);
}

}  // namespace brindle
