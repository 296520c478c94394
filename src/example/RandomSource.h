#pragma once

#include <cstdint>
#include <cstdlib>

namespace brindle {

/// SplitMix64: numbers that look random and are the same on every computer for the same state.
struct RandomSource {
    std::uint64_t state = 0;

    [[nodiscard]] std::uint64_t next() {
        state += 0x9e3779b97f4a7c15;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }

    /// A number from 0 to `bound` - 1, all equally likely. `bound` is at least 1.
    [[nodiscard]] std::uint64_t below(std::uint64_t bound) {
        if (bound == 0) std::abort();
        __extension__ using Product = unsigned __int128;
        // The draws that would make some numbers likelier than others.
        const std::uint64_t rejected = (0 - bound) % bound;
        Product product = 0;
        do product = Product{next()} * bound;
        while (static_cast<std::uint64_t>(product) < rejected);
        return static_cast<std::uint64_t>(product >> 64);
    }

    /// A number from `least` to `most`, all equally likely. `most` is not below `least`.
    [[nodiscard]] std::int64_t between(std::int64_t least, std::int64_t most) {
        return least + static_cast<std::int64_t>(below(static_cast<std::uint64_t>(most - least) + 1));
    }
};

}  // namespace brindle
