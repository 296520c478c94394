#pragma once

#include <string>
#include <string_view>

namespace brindle {

/// A name or path of the file system as text that is safe to show: bytes that are not UTF-8 become U+FFFD,
/// and control characters, line and paragraph separators and bidirectional controls are escaped ("\n",
/// "\x1b", "\u202e"), so that a file name is never an instruction to a terminal or a page.
/// For showing only: two names may read alike.
[[nodiscard]] std::string fileNameText(std::string_view bytes);

}  // namespace brindle
