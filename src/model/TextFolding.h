#pragma once

#include <string_view>

namespace brindle {

/// Whether two names are one on a file system that ignores case. A name that is not UTF-8 has no case and is
/// compared byte for byte.
[[nodiscard]] bool equalIgnoringCase(std::string_view a, std::string_view b);

}  // namespace brindle
