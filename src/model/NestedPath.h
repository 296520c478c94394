#pragma once

#include <optional>
#include <string_view>

namespace brindle {

/// What is left of `path` below `folder`, component by component: byte for byte, or ignoring case. Empty when
/// the two are the same, nothing when `path` lies elsewhere. A component that is not UTF-8 has no case and is
/// compared byte for byte. Both paths are absolute and standardised.
[[nodiscard]] std::optional<std::string_view> pathBelow(std::string_view path, std::string_view folder,
                                                        bool caseSensitive);

/// Whether `path` is `folder` or lies below it, under the rules of pathBelow().
[[nodiscard]] inline bool liesAtOrBelow(std::string_view path, std::string_view folder, bool caseSensitive) {
    return pathBelow(path, folder, caseSensitive).has_value();
}

}  // namespace brindle
