#include "model/RandomUUID.h"

#include <algorithm>
#include <cstdint>
#include <fmt/format.h>
#include <random>

namespace brindle {

std::string randomUUID() {
    std::random_device random;
    std::uint32_t word[4] = {random(), random(), random(), random()};
    word[1] = (word[1] & 0xffff0fff) | 0x00004000;
    word[2] = (word[2] & 0x3fffffff) | 0x80000000;
    return fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:04X}{:08X}", word[0], word[1] >> 16, word[1] & 0xffff,
                       word[2] >> 16, word[2] & 0xffff, word[3]);
}

bool isUUID(std::string_view text) {
    constexpr std::string_view form = "00000000-0000-0000-0000-000000000000";
    return std::ranges::equal(text, form, [](char c, char expected) {
        return expected == '-' ? c == '-' : (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
    });
}

}  // namespace brindle
