#pragma once

#include "analysis/ExplorerState.h"
#include "model/Change.h"

#include <string>
#include <vector>

namespace brindle {

/// Sorts by the largest magnitude, by the newest time, or by name; equal ones by id. Names are in the order
/// of a file browser of the locale: letters before their case and accents, numbers by their value.
void sortFiles(std::vector<const FileChange*>& changes, FileSort sort, const std::string& locale);

}  // namespace brindle
