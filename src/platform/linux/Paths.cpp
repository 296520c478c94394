#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace brindle {
namespace {

bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

/// A folder of the user's that a variable may name; what it says counts only when it is absolute.
std::string folderNamed(const std::optional<std::string>& variable, const char* usualPlace,
                        std::string_view home) {
    if (variable && isAbsolute(*variable)) return standardizedPath(*variable, "/");
    return standardizedPath(usualPlace, home);
}

std::string homeInUserDatabase() {
    std::vector<char> buffer(4096);
    passwd entry{};
    passwd* found = nullptr;
    int error = 0;
    while ((error = ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found)) == ERANGE)
        buffer.resize(buffer.size() * 2);
    if (found == nullptr || !isAbsolute(found->pw_dir))
        throw std::system_error(error != 0 ? error : ENOENT, std::generic_category(), "The home folder");
    return found->pw_dir;
}

}  // namespace

std::string standardizedPath(std::string_view text, std::string_view workingFolder) {
    std::string result = isAbsolute(text) ? "/" : standardizedPath(workingFolder, "/");
    while (!text.empty()) {
        const auto component = text.substr(0, text.find('/'));
        text.remove_prefix(std::min(component.size() + 1, text.size()));
        if (component.empty() || component == ".") continue;
        result = component == ".." ? std::string(parentPath(result)) : joinedPath(result, component);
    }
    return result;
}

std::string standardizedPath(std::string_view path) {
    return standardizedPath(path, isAbsolute(path) ? "/" : std::filesystem::current_path().native());
}

std::string joinedPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.ends_with('/')) path += '/';
    return path += name;
}

std::string_view parentPath(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool isAtOrBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") return isAbsolute(path);
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::optional<std::string> environmentValue(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::string homeFolder() {
    const auto home = environmentValue("HOME");
    return standardizedPath(home && isAbsolute(*home) ? *home : homeInUserDatabase(), "/");
}

std::string dataHome(const std::optional<std::string>& xdgDataHome, std::string_view home) {
    return folderNamed(xdgDataHome, ".local/share", home);
}

std::string dataHome() {
    return dataHome(environmentValue("XDG_DATA_HOME"), homeFolder());
}

std::string configHome(const std::optional<std::string>& xdgConfigHome, std::string_view home) {
    return folderNamed(xdgConfigHome, ".config", home);
}

std::string configHome() {
    return configHome(environmentValue("XDG_CONFIG_HOME"), homeFolder());
}

std::string cacheHome(const std::optional<std::string>& xdgCacheHome, std::string_view home) {
    return folderNamed(xdgCacheHome, ".cache", home);
}

std::string cacheHome() {
    return cacheHome(environmentValue("XDG_CACHE_HOME"), homeFolder());
}

std::string defaultDataDirectory() {
    return joinedPath(dataHome(), "Brindle");
}

std::string programFile() {
    return std::filesystem::read_symlink("/proc/self/exe").native();
}

unsigned userID() {
    return ::getuid();
}

}  // namespace brindle
