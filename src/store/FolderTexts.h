#pragma once

#include "model/FolderPath.h"
#include "model/PathSet.h"

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>

namespace brindle {

/// Splits stored folders into their components. Thousands of rows share a folder, so each text is split once,
/// or again after `limit` others.
class FolderTexts {
public:
    /// Enough for rows that come by folder, and little to keep.
    static constexpr std::size_t fewForAStream = 1000;

    explicit FolderTexts(std::size_t limit = std::numeric_limits<std::size_t>::max()) : limit_(limit) {}

    /// Valid until the next call.
    [[nodiscard]] const FolderPath& path(std::string_view folder);

private:
    using Known = std::unordered_map<std::string, FolderPath, PathHash, std::equal_to<>>;

    std::size_t limit_;
    Known known_;
    const Known::value_type* last_ = nullptr;
};

}  // namespace brindle
