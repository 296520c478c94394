#include "scan/ScanRules.h"

#include "platform/Paths.h"

#include <array>

namespace brindle {
namespace {

// What systems keep for themselves at the top of a drive.
constexpr std::array<std::string_view, 14> wholeDriveExclusions{
    ".Spotlight-V100",
    ".fseventsd",
    ".DocumentRevisions-V100",
    ".TemporaryItems",
    ".Trashes",
    ".MobileBackups",
    ".PKInstallSandboxManager",
    ".PKInstallSandboxManager-SystemSoftware",
    ".PreviousSystemInformation",
    ".exclave",
    ".vol",
    "lost+found",
    "System Volume Information",
    "$RECYCLE.BIN",
};

constexpr std::string_view trashName = ".Trash";

void addCandidate(ScanRules& rules, std::string_view root, std::string_view path, bool isTrash) {
    if (path == root || !isAtOrBelow(path, root)) return;
    const std::string relativePath(path.substr(root == "/" ? 1 : root.size() + 1));
    rules.uncountedPaths.insert(relativePath);
    if (isTrash || lastComponent(path) == trashName) rules.trashPaths.insert(relativePath);
}

}  // namespace

std::vector<UncountedCandidate> uncountedCandidates(const CandidateSources& sources) {
    std::vector<UncountedCandidate> candidates;
    const auto add = [&](std::string path, bool isTrash) {
        candidates.push_back({.path = std::move(path), .isTrash = isTrash});
    };
    add(joinedPath(sources.home, trashName), true);
    add(joinedPath(sources.dataHome, "Trash"), true);
    for (const auto& mountPoint : sources.mountPoints) {
        const auto user = std::to_string(sources.userID);
        add(joinedPath(mountPoint, ".Trash-" + user), true);
        add(joinedPath(mountPoint, ".Trash/" + user), true);
    }
    add(sources.historyDirectory, false);
    add(sources.programFile, false);
    for (const auto& location : sources.otherLocations) add(location, false);
    return candidates;
}

ScanRules makeScanRules(std::string_view root, bool isWholeDrive,
                        std::span<const UncountedCandidate> candidates,
                        const std::optional<DriveLayout>& layout) {
    ScanRules rules;
    if (isWholeDrive) rules.excludedPaths.insert(wholeDriveExclusions.begin(), wholeDriveExclusions.end());
    const bool isDataVolume = layout && root == layout->dataVolume;
    if (isDataVolume) rules.excludedPaths.insert(layout->exclusions.begin(), layout->exclusions.end());

    for (const auto& candidate : candidates) {
        addCandidate(rules, root, candidate.path, candidate.isTrash);
        if (isDataVolume) addCandidate(rules, root, layout->dataVolume + candidate.path, candidate.isTrash);
    }
    return rules;
}

}  // namespace brindle
