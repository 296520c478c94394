#pragma once

#include "model/HistorySnapshot.h"

#include <string>
#include <vector>

namespace brindle {

/// What a partial day of a scope leaves out: which of its locations had no check, and of which some folders
/// could not be read, each in a sentence. Empty when the day is whole, or not recorded at all.
[[nodiscard]] std::vector<std::string> partialReasons(const HistorySnapshot& snapshot,
                                                      const LocationScope& scope, const LocalDay& day);

}  // namespace brindle
