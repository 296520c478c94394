#include "cli/PlaceWord.h"

#include "cli/Context.h"
#include "model/FileNameText.h"
#include "model/NestedPath.h"
#include "model/Translation.h"
#include "platform/Paths.h"

#include <algorithm>
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
    return UsageError(filled(text, fileNameText(name)));
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

bool liesIn(const FileChange& change, const FolderRef& folder) {
    return change.locationID == folder.locationID && change.folder.size() >= folder.components.size() &&
           std::equal(folder.components.begin(), folder.components.end(), change.folder.begin());
}

LocationScope scopeNamed(const std::string& text, const HistorySnapshot& snapshot) {
    if (text.empty()) return {};
    const std::string path = standardizedPath(text);
    const TrackedLocation* best = nullptr;
    const auto rank = [&](const TrackedLocation& location) {
        const int named = location.path == path ? 2 : location.name == text ? 1 : 0;
        return named == 0 ? 0 : 2 * named + int{!location.trackingEnd};
    };
    for (const TrackedLocation& location : snapshot.locations)
        if (rank(location) > 0 && (best == nullptr || rank(location) >= rank(*best))) best = &location;
    if (best == nullptr)
        throw error(translated("“{}” isn't an included location. `brindle locations` lists them."), text);
    return {best->id};
}

}  // namespace brindle
