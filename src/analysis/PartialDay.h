#pragma once

#include "model/HistorySnapshot.h"

#include <string>
#include <vector>

namespace brindle {

/// What the record of a day leaves out over a scope, in whole sentences; empty when it is whole. Of a day
/// that is recorded.
[[nodiscard]] std::vector<std::string> partialSentences(const HistorySnapshot& snapshot,
                                                        const LocationScope& scope, const LocalDay& day);

}  // namespace brindle
