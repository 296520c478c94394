#pragma once

#include <optional>
#include <string>
#include <string_view>

// Paths are bytes of the file system, absolute, without a trailing "/" but for "/" itself.

namespace brindle {

/// The absolute path that `text` names from `workingFolder`, told from the text alone: ".", ".." and doubled
/// or trailing slashes are taken out, symbolic links are left as they stand. ".." stops at "/".
[[nodiscard]] std::string standardizedPath(std::string_view text, std::string_view workingFolder);

/// `path` as it is seen from the process's working folder. Throws std::system_error when that is gone and
/// `path` is relative.
[[nodiscard]] std::string standardizedPath(std::string_view path);

/// "/home/ann" and "notes" make "/home/ann/notes"; "/" and "home" make "/home".
[[nodiscard]] std::string joinedPath(std::string_view folder, std::string_view name);

/// The folder that holds `path`; "/" for "/".
[[nodiscard]] std::string_view parentPath(std::string_view path);

/// What comes after the last "/"; empty for "/".
[[nodiscard]] std::string_view lastComponent(std::string_view path);

/// Whether `path` is `folder` or lies below it, byte for byte and component by component.
[[nodiscard]] bool isAtOrBelow(std::string_view path, std::string_view folder);

/// The value of an environment variable; nothing when it is not set.
[[nodiscard]] std::optional<std::string> environmentValue(const char* name);

/// The user's home folder: $HOME when it is absolute, else what the user database says.
/// Throws std::system_error when neither gives one.
[[nodiscard]] std::string homeFolder();

/// Where the user's programs keep their data: the value of $XDG_DATA_HOME when it is absolute, else
/// ".local/share" in the home folder.
[[nodiscard]] std::string dataHome(const std::optional<std::string>& xdgDataHome, std::string_view home);
[[nodiscard]] std::string dataHome();

/// Where the user's programs keep their settings: the value of $XDG_CONFIG_HOME when it is absolute, else
/// ".config" in the home folder.
[[nodiscard]] std::string configHome(const std::optional<std::string>& xdgConfigHome, std::string_view home);
[[nodiscard]] std::string configHome();

/// Where the user's programs keep what they can make again: the value of $XDG_CACHE_HOME when it is absolute,
/// else ".cache" in the home folder.
[[nodiscard]] std::string cacheHome(const std::optional<std::string>& xdgCacheHome, std::string_view home);
[[nodiscard]] std::string cacheHome();

/// Where Brindle keeps its history unless it is told otherwise.
[[nodiscard]] std::string defaultDataDirectory();

/// The file of the running program. Throws std::system_error when it cannot be told.
[[nodiscard]] std::string programFile();

/// The number of the user that the process acts as.
[[nodiscard]] unsigned userID();

}  // namespace brindle
