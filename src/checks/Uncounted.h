#pragma once

#include "model/LocationRecord.h"
#include "scan/ScanRules.h"

#include <span>
#include <string>
#include <vector>

namespace brindle {

/// The trees that no walk of a run counts, for this user on this computer as it is now: trash folders, the
/// history's own folder, the program, and every location. Trees that are reached by way of a symbolic link
/// are named by their real paths too, which are the ones that a walk meets.
[[nodiscard]] std::vector<UncountedCandidate> uncountedHere(const std::string& historyDirectory,
                                                            std::span<const LocationRecord> locations);

}  // namespace brindle
