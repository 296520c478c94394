#pragma once

#include <string>

namespace brindle {

/// The user's locale as ICU names it ("en_US", "de_DE"), from the environment. Where none is set, or only
/// the bare POSIX one, it is English: figures without digit grouping are hard to read.
[[nodiscard]] std::string userLocale();

}  // namespace brindle
