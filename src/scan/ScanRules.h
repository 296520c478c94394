#pragma once

#include "model/Walk.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// How a system lays out its startup drive, where the files lie on a volume of their own whose folders are
/// also seen from "/". Linux has no such volume.
struct DriveLayout {
    std::string dataVolume;               // its scan path
    std::vector<std::string> exclusions;  // below it: shown there, but stored elsewhere

    bool operator==(const DriveLayout&) const = default;
};

/// A tree that is measured but never tracked, wherever it lies in a location.
struct UncountedCandidate {
    std::string path;
    bool isTrash = false;

    bool operator==(const UncountedCandidate&) const = default;
};

/// What is known of this computer and this history when a run begins. A walk never goes through a symbolic
/// link, so all paths are standardised with their links resolved.
struct CandidateSources {
    std::string home;
    std::string dataHome;
    std::vector<std::string> mountPoints;
    unsigned userID = 0;
    std::string historyDirectory;
    std::string programFile;
    std::vector<std::string> otherLocations;
};

/// The trash folders of the user, the history, the program and the other locations: no file is tracked twice,
/// and Brindle's own files are not news.
[[nodiscard]] std::vector<UncountedCandidate> uncountedCandidates(const CandidateSources& sources);

/// The rules of one location. `root` is its scan path, standardised with its links resolved; candidates
/// outside it, or equal to it, add nothing.
[[nodiscard]] ScanRules makeScanRules(std::string_view root, bool isWholeDrive,
                                      std::span<const UncountedCandidate> candidates,
                                      const std::optional<DriveLayout>& layout = {});

}  // namespace brindle
