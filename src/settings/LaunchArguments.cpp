#include "settings/LaunchArguments.h"

#include <string_view>

namespace brindle {

LaunchArguments parseLaunchArguments(std::span<const char* const> arguments) {
    LaunchArguments parsed;
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        const std::string_view key = arguments[i];
        const std::string_view value = arguments[i + 1];
        if (key.size() < 2 || key[0] != '-' || key[1] == '-' || value.starts_with('-')) continue;
        parsed[std::string(key.substr(1))] = value;
        ++i;
    }
    return parsed;
}

}  // namespace brindle
