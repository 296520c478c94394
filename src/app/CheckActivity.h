#pragma once

#include <cstdint>
#include <string>

namespace brindle {

/// What a running check is doing.
struct CheckActivity {
    std::string locationName;
    std::int64_t filesSeen = 0;
    std::int64_t bytesSeen = 0;
    double elapsed = 0;  // seconds
    bool isEstimating = false;

    bool operator==(const CheckActivity&) const = default;
};

/// One line: "Checking your files… Documents · 1,234 files".
[[nodiscard]] std::string description(const CheckActivity& activity);

}  // namespace brindle
