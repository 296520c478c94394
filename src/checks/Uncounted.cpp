#include "checks/Uncounted.h"

#include "platform/Mounts.h"
#include "platform/Paths.h"

#include <filesystem>
#include <optional>

namespace brindle {
namespace {

std::optional<std::string> realPath(const std::string& path) {
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path, error);
    if (error || resolved == path) return {};
    return resolved.string();
}

}  // namespace

std::vector<UncountedCandidate> uncountedHere(const std::string& historyDirectory,
                                              std::span<const LocationRecord> locations) {
    CandidateSources sources{.home = standardizedPath(homeFolder()),
                             .dataHome = standardizedPath(dataHome()),
                             .userID = userID(),
                             .historyDirectory = historyDirectory,
                             .programFile = programFile()};
    const MountTable mounts = MountTable::current();
    for (const Mount& mount : mounts.mounts())
        if (isDrive(mount)) sources.mountPoints.push_back(mount.target);
    for (const LocationRecord& location : locations) sources.otherLocations.push_back(location.scanPath);
    std::vector<UncountedCandidate> candidates = uncountedCandidates(sources);
    for (std::size_t i = 0, named = candidates.size(); i < named; ++i)
        if (auto real = realPath(candidates[i].path))
            candidates.push_back({.path = std::move(*real), .isTrash = candidates[i].isTrash});
    return candidates;
}

}  // namespace brindle
