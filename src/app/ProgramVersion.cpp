#include "app/ProgramVersion.h"

#include <algorithm>
#include <charconv>

namespace brindle {
namespace {

/// Takes the digits at the front of `text`; nothing when there are none, or too many for a number.
std::optional<std::uint32_t> takeNumber(std::string_view& text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return {};
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

}  // namespace

std::optional<ProgramVersion> ProgramVersion::from(std::string_view text) {
    ProgramVersion version;
    version.text_ = text;
    do {
        if (!version.numbers_.empty()) text.remove_prefix(1);
        const auto number = takeNumber(text);
        if (!number) return {};
        version.numbers_.push_back(*number);
    } while (text.starts_with('.'));
    while (!version.numbers_.empty() && version.numbers_.back() == 0) version.numbers_.pop_back();
    if (text.empty()) return version;

    const auto word = text.substr(1, text.find_first_not_of("abcdefghijklmnopqrstuvwxyz", 1) - 1);
    if (!text.starts_with('~') || word.empty()) return {};
    version.isRelease_ = false;
    version.word_ = word;
    text.remove_prefix(1 + word.size());
    if (text.empty()) return version;
    const auto number = takeNumber(text);
    if (!number || !text.empty()) return {};
    version.wordNumber_ = *number;
    return version;
}

std::weak_ordering ProgramVersion::operator<=>(const ProgramVersion& other) const {
    if (const auto order = numbers_ <=> other.numbers_; order != 0) return order;
    if (const auto order = isRelease_ <=> other.isRelease_; order != 0) return order;
    if (const auto order = word_ <=> other.word_; order != 0) return order;
    return wordNumber_ <=> other.wordNumber_;
}

}  // namespace brindle
