#include "analysis/UnusualGrowth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace brindle {
namespace {

constexpr std::int64_t leastGrowth = 1'000'000'000;
constexpr std::size_t fewestDays = 14;
constexpr std::size_t daysPerRareDay = 20;
constexpr double mostDeviations = 5;
constexpr double normalDeviation = 1.4826;  // for each median deviation

/// The value that so many are larger than.
template <class Value>
Value valueBelow(std::size_t larger, std::vector<Value>& values) {
    const auto place = values.end() - 1 - static_cast<std::ptrdiff_t>(larger);
    std::ranges::nth_element(values, place);
    return *place;
}

}  // namespace

std::optional<std::int64_t> unusualGrowth(std::int64_t growth, std::vector<std::int64_t> past) {
    if (growth < leastGrowth || past.size() < fewestDays) return {};
    const std::int64_t most = std::max<std::int64_t>(valueBelow(past.size() / daysPerRareDay, past), 0);
    const auto median = static_cast<double>(valueBelow(past.size() / 2, past));
    std::vector<double> deviations;
    deviations.reserve(past.size());
    for (const std::int64_t day : past) deviations.push_back(std::abs(static_cast<double>(day) - median));
    const double deviation = normalDeviation * valueBelow(deviations.size() / 2, deviations);
    if (growth <= most || static_cast<double>(growth) <= median + mostDeviations * deviation) return {};
    return most;
}

}  // namespace brindle
