#pragma once

#include <cstdint>

namespace brindle {

/// What estimates add up to. Never added to measured totals.
struct EstimateTotals {
    std::int64_t bytes = 0;
    std::int64_t files = 0;

    bool operator==(const EstimateTotals&) const = default;
};

}  // namespace brindle
