#pragma once

#include "settings/LaunchArguments.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace brindle {

/// The settings of one launch: what its arguments say, else what is stored. A value of another type than the
/// one asked for reads as absent; so does an argument that cannot be read as that type, which still hides
/// what is stored.
class SettingValues {
public:
    /// `stored` is a JSON object.
    explicit SettingValues(nlohmann::ordered_json stored = nlohmann::ordered_json::object(),
                           LaunchArguments arguments = {})
        : stored_(std::move(stored)), arguments_(std::move(arguments)) {}

    [[nodiscard]] std::optional<std::string> text(const std::string& key) const;
    /// As an argument: "yes", "true" or "1", and "no", "false" or "0", in any case of letters.
    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const;
    /// As boolean(), but an argument is a text and never a Boolean.
    [[nodiscard]] std::optional<bool> storedBoolean(const std::string& key) const;
    [[nodiscard]] std::optional<std::int64_t> integer(const std::string& key) const;

private:
    [[nodiscard]] const std::string* argument(const std::string& key) const;
    /// Null when nothing is stored.
    [[nodiscard]] const nlohmann::ordered_json* stored(const std::string& key) const;

    nlohmann::ordered_json stored_;
    LaunchArguments arguments_;
};

}  // namespace brindle
