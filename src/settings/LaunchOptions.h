#pragma once

#include "platform/Paths.h"
#include "settings/SettingValues.h"

#include <functional>
#include <optional>
#include <string>

namespace brindle {

/// What a launch fixes for as long as the program runs.
struct LaunchOptions {
    std::string dataDirectory;              // where the history is kept; standardised
    bool startInExample = false;            // shows generated history until the user asks for the own one
    bool trackingEnabled = true;            // false: no file of the user is ever looked at
    std::optional<std::string> testFolder;  // the folder to track
    std::optional<std::string> testExportDirectory;  // where statements go, without asking
    std::optional<int> testCheckIntervalSeconds;

    bool operator==(const LaunchOptions&) const = default;
};

/// Tells a variable of the process environment.
using Environment = std::function<std::optional<std::string>(const char* name)>;

/// Reads the data directory ("BrindleDataDirectory": a path, relative to the working folder if need be) and
/// whether to start in the example ("BrindleExample"). A program that runs tests in this process, known by
/// its variable in the environment, gets the example and never the user's files. The fields for tests are
/// left to tests.
/// Throws std::system_error when no data directory is set and there is no home folder.
[[nodiscard]] LaunchOptions readLaunchOptions(const SettingValues& settings,
                                              const Environment& environment = environmentValue);

}  // namespace brindle
