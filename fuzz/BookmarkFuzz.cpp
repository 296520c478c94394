#include "platform/Bookmark.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

// Whatever decodes is what encode() gives for it, byte for byte.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    if (const auto bookmark = brindle::decodeBookmark(bytes))
        if (!std::ranges::equal(brindle::encode(*bookmark), bytes)) std::abort();
    return 0;
}
