#include "checks/Uncounted.h"

#include "platform/Mounts.h"
#include "platform/Paths.h"

#include <filesystem>

namespace brindle {
namespace {

std::string realPath(const std::string& path) {
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path, error);
    return error ? path : resolved.string();
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
    return uncountedCandidates(sources);
}

ScanRules rulesFor(const std::string& scanPath, LocationKind kind,
                   std::span<const UncountedCandidate> uncounted) {
    const bool isWholeDrive = kind == LocationKind::volume;
    ScanRules rules = makeScanRules(scanPath, isWholeDrive, uncounted);

    std::vector<UncountedCandidate> real(uncounted.begin(), uncounted.end());
    for (UncountedCandidate& candidate : real) candidate.path = realPath(candidate.path);
    ScanRules realRules = makeScanRules(realPath(scanPath), isWholeDrive, real);
    rules.uncountedPaths.merge(realRules.uncountedPaths);
    rules.trashPaths.merge(realRules.trashPaths);
    return rules;
}

}  // namespace brindle
