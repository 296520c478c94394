#include "model/Packages.h"

#include <algorithm>
#include <array>

namespace brindle {
namespace {

constexpr std::array<std::string_view, 23> packageExtensions = {
    "app",    "bundle",    "framework",     "plugin",        "appex",        "kext",
    "xpc",    "fcpbundle", "photoslibrary", "imovielibrary", "musiclibrary", "tvlibrary",
    "logicx", "band",      "xcodeproj",     "xcworkspace",   "xcarchive",    "playground",
    "pages",  "numbers",   "key",           "rtfd",          "sparsebundle"};

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool isPackage(std::string_view component) {
    const auto dot = component.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    const std::string_view extension = component.substr(dot + 1);
    return std::ranges::any_of(packageExtensions, [extension](std::string_view known) {
        return std::ranges::equal(extension, known, {}, lowered);
    });
}

std::size_t creditedDepth(std::span<const std::string> components, std::size_t depth) {
    const std::size_t most = std::min(depth, components.size());
    for (std::size_t i = 0; i < most; ++i)
        if (isPackage(components[i])) return i + 1;
    return most;
}

std::string_view contributor(std::string_view folder) {
    std::size_t end = 0;
    for (std::size_t taken = 0; taken < contributorDepth && end < folder.size(); ++taken) {
        const std::size_t begin = taken == 0 ? 0 : end + 1;
        end = std::min(folder.find('/', begin), folder.size());
        if (isPackage(folder.substr(begin, end - begin))) break;
    }
    return folder.substr(0, end);
}

}  // namespace brindle
