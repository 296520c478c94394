#pragma once

#include <string>
#include <string_view>

namespace brindle {

/// A new random UUID (version 4) in its canonical form, in upper case. Any thread may ask.
[[nodiscard]] std::string randomUUID();

/// Whether the text is a UUID in that form.
[[nodiscard]] bool isUUID(std::string_view text);

}  // namespace brindle
