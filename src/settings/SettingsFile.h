#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace brindle {

/// A setting that could not be stored. The file is as it was; what() is the sentence for the user.
class SettingsError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct StoredSettings {
    nlohmann::ordered_json values = nlohmann::ordered_json::object();
    std::optional<std::string> note;  // what the user should know about how they were read
};

/// The user's settings: one JSON object in a file that only they may read. Several programs may read and
/// write it at the same time: each write is whole, and changes its own key only.
/// Thread: any; a write waits for other programs' writes, and for the disk.
class SettingsFile {
public:
    /// Touches nothing yet.
    explicit SettingsFile(std::string path) : path_(std::move(path)) {}

    /// The file in the user's configuration folder. Throws std::system_error when there is no home folder.
    [[nodiscard]] static SettingsFile ofUser();

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Never fails: a file that cannot be read gives no settings and a note. A damaged one is set aside under
    /// another name first.
    [[nodiscard]] StoredSettings read() const;

    /// Stores one value and keeps every other key as it is in the file by now. Returns the note on a damaged
    /// file that was set aside.
    /// Throws: SettingsError.
    std::optional<std::string> write(const std::string& key, const nlohmann::ordered_json& value) const;

private:
    /// With the lock held. Throws std::system_error.
    [[nodiscard]] StoredSettings readOrSetAside() const;

    std::string path_;
};

}  // namespace brindle
