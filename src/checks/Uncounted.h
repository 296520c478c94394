#pragma once

#include "model/LocationRecord.h"
#include "scan/ScanRules.h"

#include <span>
#include <string>
#include <vector>

namespace brindle {

/// The trees that no walk of a run counts, for this user on this computer as it is now: trash folders, the
/// history's own folder, the program, and every location that is a location of its own.
[[nodiscard]] std::vector<UncountedCandidate> uncountedHere(const std::string& historyDirectory,
                                                            std::span<const LocationRecord> locations);

/// The rules of one location's walk. A folder that is reached by way of a symbolic link, above the location
/// or above an uncounted tree, is recognised under its real path too.
[[nodiscard]] ScanRules rulesFor(const std::string& scanPath, LocationKind kind,
                                 std::span<const UncountedCandidate> uncounted);

}  // namespace brindle
