#include "settings/LaunchOptions.h"

namespace brindle {

LaunchOptions readLaunchOptions(const SettingValues& settings, const Environment& environment) {
    const std::string directory = settings.text("BrindleDataDirectory").value_or("");
    LaunchOptions options{
        .dataDirectory = directory.empty() ? defaultDataDirectory() : standardizedPath(directory),
        .startInExample = settings.boolean("BrindleExample").value_or(false)};
    if (environment("XCTestConfigurationFilePath")) {
        options.trackingEnabled = false;
        options.startInExample = true;
    }
    return options;
}

}  // namespace brindle
