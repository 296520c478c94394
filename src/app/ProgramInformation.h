#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace brindle {

/// The file that says what this build is set up for; installed with the program, to be found from where the
/// program is.
[[nodiscard]] std::string informationFile(const std::string& program);

/// A JSON object; an empty one when the file is missing or damaged.
[[nodiscard]] nlohmann::ordered_json readInformation(const std::string& path);

}  // namespace brindle
