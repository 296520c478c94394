#include "export/StatementsFolder.h"

#include "platform/FolderProbe.h"
#include "platform/Paths.h"

#include <algorithm>

namespace brindle {

std::string statementsFolder(std::span<const std::string> exports, const std::string& documents,
                             const MountTable& mounts) {
    const auto latest = std::ranges::find_if(
        exports, [&](const std::string& path) { return realPath(path, mounts).has_value(); });
    return latest != exports.end() ? std::string(parentPath(*latest)) : documents;
}

}  // namespace brindle
