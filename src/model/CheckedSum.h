#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace brindle {

[[noreturn]] inline void stopOnOverflow() {
    std::fputs("brindle: a byte count no longer fits 64 bits; nothing was recorded\n", stderr);
    std::abort();
}

/// a + b. Ends the process with a message when the sum does not fit: a wrapped byte count would be
/// written down as history.
[[nodiscard]] inline std::int64_t checkedSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) stopOnOverflow();
    return sum;
}

/// a - b, under the rule of checkedSum().
[[nodiscard]] inline std::int64_t checkedDifference(std::int64_t a, std::int64_t b) {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(a, b, &difference)) stopOnOverflow();
    return difference;
}

}  // namespace brindle
