#include "checks/Uncounted.h"

#include "platform/FolderProbe.h"
#include "platform/Mounts.h"
#include "platform/Paths.h"

namespace brindle {

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
        if (auto real = realPath(candidates[i].path, mounts); real && *real != candidates[i].path)
            candidates.push_back({.path = std::move(*real), .isTrash = candidates[i].isTrash});
    return candidates;
}

}  // namespace brindle
