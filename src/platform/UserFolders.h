#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// The folder for documents that the text of a "user-dirs.dirs" file names; nothing when it names none, or in
/// a form that no such file has.
[[nodiscard]] std::optional<std::string> documentsNamed(std::string_view userDirs, std::string_view home);

/// Where the user keeps documents: the folder of that file in the settings' folder, else "Documents" in the
/// home folder, whichever is there; else the home folder itself.
[[nodiscard]] std::string documentsFolder();

}  // namespace brindle
