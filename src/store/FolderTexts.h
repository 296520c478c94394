#pragma once

#include "model/FolderPath.h"
#include "model/PathSet.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace brindle {

/// Splits stored folders into their components. Thousands of rows share a folder, so each text is split once.
class FolderTexts {
public:
    [[nodiscard]] const FolderPath& path(std::string_view folder);

private:
    using Known = std::unordered_map<std::string, FolderPath, PathHash, std::equal_to<>>;

    Known known_;
    const Known::value_type* last_ = nullptr;
};

}  // namespace brindle
