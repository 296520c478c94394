#pragma once

#include "model/PathSet.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brindle {

/// Splits stored folders into their components. Thousands of rows share a folder, so each text is split once.
class FolderTexts {
public:
    /// Valid as long as this object.
    [[nodiscard]] const std::vector<std::string>& components(std::string_view folder);

private:
    std::unordered_map<std::string, std::vector<std::string>, PathHash, std::equal_to<>> known_;
};

}  // namespace brindle
