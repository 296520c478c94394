#include "cli/PlaceWord.h"

#include "cli/Context.h"
#include "model/FileNameText.h"
#include "model/NestedPath.h"
#include "model/Translation.h"
#include "platform/Paths.h"

#include <algorithm>
#include <fmt/format.h>
#include <vector>

namespace brindle {
namespace {

FolderPath componentsOf(std::string_view path) {
    std::vector<std::string> components;
    while (!path.empty()) {
        const auto slash = std::min(path.find('/'), path.size());
        if (slash > 0) components.emplace_back(path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    return components;
}

UsageError error(const char* text, const std::string& name) {
    return UsageError(fmt::format(fmt::runtime(text), fileNameText(name)));
}

}  // namespace

std::optional<FolderRef> folderNamed(const std::string& path, const HistorySnapshot& snapshot) {
    if (path.empty()) return {};
    const std::string wanted = standardizedPath(path);
    const TrackedLocation* innermost = nullptr;
    for (const TrackedLocation& location : snapshot.locations)
        if (liesAtOrBelow(wanted, location.path, location.caseSensitive) &&
            (innermost == nullptr || location.path.size() >= innermost->path.size()))
            innermost = &location;
    if (innermost == nullptr) throw error(translated("“{}” isn't in any included location."), wanted);
    return FolderRef{innermost->id, componentsOf(std::string_view(wanted).substr(innermost->path.size()))};
}

LocationScope locationNamed(const std::string& pathOrName, const HistorySnapshot& snapshot) {
    if (pathOrName.empty()) return {};
    const std::string path = standardizedPath(pathOrName);
    // Of one that was removed and included again, the later entry counts.
    const TrackedLocation* atPath = nullptr;
    const TrackedLocation* named = nullptr;
    bool isAmbiguous = false;
    for (const TrackedLocation& location : snapshot.locations) {
        if (location.path == path) atPath = &location;
        if (location.name != pathOrName) continue;
        isAmbiguous = isAmbiguous || (named != nullptr && named->path != location.path);
        named = &location;
    }
    if (atPath != nullptr) return {atPath->id};
    if (isAmbiguous)
        throw error(translated("Several locations are called “{}”. Give the path of one."), pathOrName);
    if (named == nullptr) throw error(translated("“{}” isn't an included location."), pathOrName);
    return {named->id};
}

}  // namespace brindle
