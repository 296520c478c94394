#include "app/LoginItem.h"

#include "app/DesktopEntry.h"
#include "model/FileNameText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"
#include "platform/Paths.h"
#include "platform/PrivateFiles.h"
#include "platform/WholeFile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace brindle {
namespace {

constexpr std::size_t largestEntry = 1U << 16U;

std::vector<std::string> partsOf(const std::string& text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const auto end = std::min(text.find(separator, begin), text.size());
        if (end != begin) parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

bool isProgramFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) && ::access(path.c_str(), X_OK) == 0;
}

/// The keys for which this session would pass the entry over, a missing type apart.
std::vector<const char*> blockingKeys(const DesktopEntry& entry, const Environment& environment) {
    const auto desktops = partsOf(environment("XDG_CURRENT_DESKTOP").value_or(""), ':');
    const auto namesThisDesktop = [&](const char* key) {
        const auto names = entry.list(key);
        return std::find_first_of(names.begin(), names.end(), desktops.begin(), desktops.end()) !=
               names.end();
    };
    std::vector<const char*> keys;
    if (entry.isTrue("Hidden")) keys.push_back("Hidden");
    if (entry.value("X-GNOME-Autostart-enabled") && !entry.isTrue("X-GNOME-Autostart-enabled"))
        keys.push_back("X-GNOME-Autostart-enabled");
    if (entry.value("OnlyShowIn") && !namesThisDesktop("OnlyShowIn")) keys.push_back("OnlyShowIn");
    if (namesThisDesktop("NotShowIn")) keys.push_back("NotShowIn");
    return keys;
}

LoginItemError failure(const std::system_error& error, const std::string& path) {
    return LoginItemError(
        filled(translated("“{0}” can't be changed ({1})."), fileNameText(path), error.code().message()));
}

}  // namespace

SystemLoginItem::SystemLoginItem(std::string entryPath, std::string program, Environment environment)
    : entryPath_(std::move(entryPath)), program_(std::move(program)), environment_(std::move(environment)) {}

SystemLoginItem SystemLoginItem::ofUser() {
    return {joinedPath(configHome(), "autostart/org.brindle.brindle.desktop"), programFile()};
}

LoginItemStatus SystemLoginItem::status() const {
    if (const auto entry = readEntry();
        entry && entry->value("Type") == "Application" && blockingKeys(*entry, environment_).empty()) {
        const auto command = commandOfExec(entry->value("Exec").value_or(""));
        const auto tried = entry->value("TryExec");
        if (command && canRun(command->front()) && (!tried || canRun(*tried)))
            return PlainLoginItemStatus::enabled;
    }
    // An entry that starts nothing is as good as none: it can be switched on as long as there is a program.
    if (isProgramFile(program_)) return PlainLoginItemStatus::disabled;
    return LoginItemUnavailable{translated(platformText::noProgramToOpen)};
}

void SystemLoginItem::enable() {
    if (!isProgramFile(program_)) throw LoginItemError(translated(platformText::noProgramToOpen));
    DesktopEntry entry = readEntry().value_or(DesktopEntry());
    entry.set("Type", "Application");
    if (!entry.value("Name")) {
        entry.set("Name", "Brindle");
        entry.set("Icon", "org.brindle.brindle");
    }
    for (const char* key : blockingKeys(entry, environment_)) entry.remove(key);
    if (const auto tried = entry.value("TryExec"); tried && !canRun(*tried)) entry.remove("TryExec");

    const auto command = commandOfExec(entry.value("Exec").value_or(""));
    const bool tellsLogin =
        command && std::count(command->begin(), command->end(), launchedAtLoginArgument) > 0;
    if (!tellsLogin || !canRun(command->front()))
        entry.set("Exec", execOfCommand({program_, launchedAtLoginArgument}));
    try {
        createPrivateDirectory(std::string(parentPath(entryPath_)));
        writeWholeFile(entryPath_, entry.text());
    } catch (const std::system_error& error) {
        throw failure(error, entryPath_);
    }
}

void SystemLoginItem::disable() {
    std::error_code error;
    std::filesystem::remove(entryPath_, error);
    if (error) throw failure(std::system_error(error), entryPath_);
}

std::optional<DesktopEntry> SystemLoginItem::readEntry() const {
    try {
        const auto text = readWholeFile(entryPath_, largestEntry);
        return text ? DesktopEntry::parse(*text) : std::nullopt;
    } catch (const std::system_error&) {
        return {};  // the session cannot read it either
    }
}

bool SystemLoginItem::canRun(const std::string& program) const {
    if (program.find('/') != std::string::npos) return program.starts_with('/') && isProgramFile(program);
    const auto folders = partsOf(environment_("PATH").value_or(""), ':');
    return std::any_of(folders.begin(), folders.end(), [&program](const std::string& folder) {
        return isProgramFile(joinedPath(folder, program));
    });
}

LoginItemStatus UnavailableLoginItem::status() const {
    return LoginItemUnavailable{translated("Open at login isn't available here.")};
}

}  // namespace brindle
