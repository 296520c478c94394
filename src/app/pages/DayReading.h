#pragma once

#include "model/HistorySnapshot.h"
#include "model/HistorySource.h"

#include <string>

namespace brindle {

/// Where the change of a day lies, in a sentence; empty when the day is neither recorded nor estimated. Reads
/// for as long as that takes, in memory that grows with the folders and not with the changes.
/// Any thread. Throws the source's error.
[[nodiscard]] std::string readDaySentence(HistorySource& source, const HistorySnapshot& snapshot,
                                          const LocationScope& scope, const LocalDay& day);

}  // namespace brindle
