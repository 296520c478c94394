#pragma once

#include "checks/Events.h"
#include "model/LocationRecord.h"

#include <optional>
#include <string>

namespace brindle {

/// Why a location of a run was not checked, in a sentence; nothing when it was, or was not asked to be.
[[nodiscard]] std::optional<std::string> obstacleText(const CheckRunSummary& run,
                                                      const LocationRecord& record);

}  // namespace brindle
