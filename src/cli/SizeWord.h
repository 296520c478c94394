#pragma once

#include <cstdint>
#include <string>

namespace brindle {

/// The bytes that a person names: "500MB", "1.5 GB", "2GiB", "1048576". Throws: UsageError.
[[nodiscard]] std::int64_t sizeNamed(const std::string& text);

}  // namespace brindle
