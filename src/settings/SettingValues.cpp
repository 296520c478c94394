#include "settings/SettingValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace brindle {
namespace {

std::optional<bool> booleanFrom(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    if (text == "yes" || text == "true" || text == "1") return true;
    if (text == "no" || text == "false" || text == "0") return false;
    return {};
}

std::optional<std::int64_t> integerFrom(const std::string& text) {
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

std::optional<std::int64_t> integerFrom(const nlohmann::ordered_json& value) {
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX) return {};
    if (value.is_number_integer()) return value.get<std::int64_t>();
    if (!value.is_number_float()) return {};
    // Other programs may write every number as a fraction.
    constexpr double largest = 1LL << 53;
    const auto number = value.get<double>();
    if (std::trunc(number) != number || std::abs(number) > largest) return {};
    return static_cast<std::int64_t>(number);
}

}  // namespace

std::optional<std::string> SettingValues::text(const std::string& key) const {
    if (const std::string* given = argument(key)) return *given;
    const auto* value = stored(key);
    return value != nullptr && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

std::optional<bool> SettingValues::boolean(const std::string& key) const {
    if (const std::string* given = argument(key)) return booleanFrom(*given);
    return storedBoolean(key);
}

std::optional<bool> SettingValues::storedBoolean(const std::string& key) const {
    if (argument(key) != nullptr) return {};
    const auto* value = stored(key);
    return value != nullptr && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

std::optional<std::int64_t> SettingValues::integer(const std::string& key) const {
    if (const std::string* given = argument(key)) return integerFrom(*given);
    const auto* value = stored(key);
    return value != nullptr ? integerFrom(*value) : std::nullopt;
}

const std::string* SettingValues::argument(const std::string& key) const {
    const auto found = arguments_.find(key);
    return found != arguments_.end() ? &found->second : nullptr;
}

const nlohmann::ordered_json* SettingValues::stored(const std::string& key) const {
    const auto found = stored_.find(key);
    return found != stored_.end() ? &*found : nullptr;
}

}  // namespace brindle
