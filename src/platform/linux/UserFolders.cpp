#include "platform/UserFolders.h"

#include "platform/Paths.h"
#include "platform/WholeFile.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace brindle {
namespace {

constexpr std::size_t longestUserDirs = 65'536;
constexpr std::string_view blanks = " \t\r";

/// The text between double quotes in the form of a shell; nothing when it does not end.
std::optional<std::string> quotedText(std::string_view text) {
    std::string value;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') return value;
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        value += text[i];
    }
    return {};
}

std::optional<std::string> folderIn(std::string_view line, std::string_view home) {
    constexpr std::string_view assignment = "XDG_DOCUMENTS_DIR=\"";
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    if (!line.starts_with(assignment)) return {};
    const auto value = quotedText(line.substr(assignment.size() - 1));
    if (!value) return {};
    if (value->starts_with("/")) return standardizedPath(*value, "/");
    constexpr std::string_view homeVariable = "$HOME";
    if (*value != homeVariable && !value->starts_with("$HOME/")) return {};
    return standardizedPath(std::string(home) + "/" + value->substr(homeVariable.size()), "/");
}

bool isFolder(const std::string& path) {
    std::error_code none;
    return std::filesystem::is_directory(path, none);
}

/// What cannot be read names no folder.
std::string userDirs() {
    try {
        return readWholeFile(joinedPath(configHome(), "user-dirs.dirs"), longestUserDirs).value_or("");
    } catch (const std::system_error&) {
        return {};
    }
}

}  // namespace

std::optional<std::string> documentsNamed(std::string_view userDirs, std::string_view home) {
    std::optional<std::string> named;  // a later line has the last word
    while (!userDirs.empty()) {
        const auto line = userDirs.substr(0, userDirs.find('\n'));
        userDirs.remove_prefix(std::min(line.size() + 1, userDirs.size()));
        if (auto folder = folderIn(line, home)) named = std::move(folder);
    }
    return named;
}

std::string documentsFolder() {
    const std::string home = homeFolder();
    if (const auto named = documentsNamed(userDirs(), home); named && isFolder(*named)) return *named;
    const std::string usual = joinedPath(home, "Documents");
    return isFolder(usual) ? usual : home;
}

}  // namespace brindle
