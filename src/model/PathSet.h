#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace brindle {

struct PathHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view path) const { return std::hash<std::string_view>{}(path); }
};

/// Relative paths, compared byte for byte; a part of a longer path is looked up without a copy.
using PathSet = std::unordered_set<std::string, PathHash, std::equal_to<>>;

}  // namespace brindle
