#include "settings/SettingsFile.h"

#include "model/FileNameText.h"
#include "model/Translation.h"
#include "platform/FileLock.h"
#include "platform/Paths.h"
#include "platform/PrivateFiles.h"
#include "platform/WholeFile.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <system_error>
#include <thread>

namespace brindle {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t largestSettings = 1U << 20U;
constexpr int deepestNesting = 64;  // writing goes as deep into the stack as the values do
constexpr int indent = 2;
constexpr std::chrono::milliseconds betweenTries{10};
constexpr int triesForLock = 200;

/// A JSON object, or nothing when the text is none.
std::optional<Json> parse(const std::string& text) {
    bool isTooDeep = false;
    const auto watchDepth = [&isTooDeep](int depth, Json::parse_event_t, const Json&) {
        isTooDeep |= depth > deepestNesting;
        return !isTooDeep;
    };
    Json values = Json::parse(text, watchDepth, false);
    return values.is_object() && !isTooDeep ? std::optional(std::move(values)) : std::nullopt;
}

/// Waits for other programs, whose writes are short. Throws std::system_error with
/// std::errc::resource_unavailable_try_again when that takes too long.
FileLock takeLock(const std::string& path) {
    createPrivateDirectory(std::string(parentPath(path)));
    for (int i = 0; i < triesForLock; ++i) {
        if (auto lock = FileLock::tryToTake(path + ".lock")) return std::move(*lock);
        std::this_thread::sleep_for(betweenTries);
    }
    throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again), path);
}

/// The first of "preferences-damaged.json", "preferences-damaged-2.json", … that is free.
std::string nameBeside(const std::string& path) {
    const std::filesystem::path file(path);
    for (int number = 1;; ++number) {
        const std::string suffix = number == 1 ? "" : fmt::format("-{}", number);
        const auto name = file.stem().native() + "-damaged" + suffix + file.extension().native();
        const auto free = file.parent_path() / name;
        if (!std::filesystem::exists(std::filesystem::symlink_status(free))) return free;
    }
}

std::string sentence(const char* text, const std::string& path, const std::string& detail = "") {
    return filled(text, fileNameText(path), fileNameText(detail));
}

std::string failureSentence(const std::system_error& error, const std::string& path) {
    const auto& code = error.code();
    if (code == std::errc::too_many_symbolic_link_levels)
        return sentence(
            translated("The settings file “{0}” is a symbolic link and was left as it is. Put a file in its "
                       "place to change settings."),
            path);
    if (code == std::errc::no_space_on_device || code.value() == EDQUOT)
        return sentence(translated("There is no room left on the disk for the settings in “{0}”."), path);
    if (code == std::errc::resource_unavailable_try_again)
        return sentence(translated("Another program is changing the settings in “{0}”. Try again later."),
                        path);
    return sentence(translated("The settings in “{0}” can't be changed ({1})."), path, code.message());
}

}  // namespace

SettingsFile SettingsFile::ofUser() {
    return SettingsFile(joinedPath(configHome(), "Brindle/preferences.json"));
}

StoredSettings SettingsFile::read() const {
    try {
        const auto contents = readWholeFile(path_, largestSettings);
        if (!contents) return {};
        if (auto values = parse(*contents)) return {.values = std::move(*values), .note = {}};
    } catch (const std::system_error& error) {
        return {.note = sentence(
                    translated("The settings in “{0}” can't be read ({1}), and the usual ones hold."), path_,
                    error.code().message())};
    }
    try {
        const FileLock lock = takeLock(path_);
        return readOrSetAside();
    } catch (const std::system_error&) {
        return {.note = sentence(translated("The settings in “{0}” are damaged, and the usual ones hold."),
                                 path_)};
    }
}

std::optional<std::string> SettingsFile::write(const std::string& key, const Json& value) const {
    try {
        refuseLink(path_);
        const FileLock lock = takeLock(path_);
        StoredSettings stored = readOrSetAside();
        stored.values[key] = value;
        writeWholeFile(path_, stored.values.dump(indent) + "\n");
        return std::move(stored.note);
    } catch (const std::system_error& error) {
        throw SettingsError(failureSentence(error, path_));
    }
}

StoredSettings SettingsFile::readOrSetAside() const {
    const auto contents = readWholeFile(path_, largestSettings);
    if (!contents) return {};
    if (auto values = parse(*contents)) return {.values = std::move(*values), .note = {}};
    refuseLink(path_);
    const std::string kept = nameBeside(path_);
    replaceFile(path_, kept);
    return {.note = sentence(
                translated("The settings in “{0}” were damaged. They are kept in “{1}”, and the usual ones "
                           "hold."),
                path_, kept)};
}

}  // namespace brindle
