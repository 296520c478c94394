#pragma once

#include "settings/SettingValues.h"

#include <string>

namespace brindle {

/// The file that says what this build is set up for; installed with the program, to be found from where the
/// program is.
[[nodiscard]] std::string informationFile(const std::string& program);

/// The folder of the catalogues that were installed with the program.
[[nodiscard]] std::string cataloguesFolder(const std::string& program);

/// Nothing is set when the file is missing or damaged.
[[nodiscard]] SettingValues readInformation(const std::string& path);

}  // namespace brindle
