#include "settings/LaunchOptions.h"
#include "settings/Preferences.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

// Whatever a program is started with, it gets options that it can work with, and every value is one of the
// arguments. The bytes are the arguments, with a NUL behind each.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brindle;
    std::vector<std::string> texts(1);
    for (const char byte : std::string_view(reinterpret_cast<const char*>(data), size)) {
        if (byte == '\0')
            texts.emplace_back();
        else
            texts.back() += byte;
    }
    std::vector<const char*> arguments;
    for (const std::string& text : texts) arguments.push_back(text.c_str());

    const LaunchArguments launch = parseLaunchArguments(arguments);
    for (const auto& [key, value] : launch)
        if (std::ranges::find(texts, "-" + key) == texts.end() ||
            std::ranges::find(texts, value) == texts.end())
            std::abort();

    const SettingValues settings({}, launch);
    const Preferences preferences = readPreferences(settings);
    if (std::ranges::find(checkIntervals, preferences.checkInterval) == checkIntervals.end()) std::abort();
    const auto environment = [](const char*) -> std::optional<std::string> { return {}; };
    const LaunchOptions options = readLaunchOptions(settings, environment);
    if (!options.dataDirectory.starts_with('/')) std::abort();
    if (standardizedPath(options.dataDirectory) != options.dataDirectory) std::abort();
    return 0;
}
