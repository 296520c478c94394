#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace brindle {

/// What the window shows as a whole.
struct ModeUnavailable {
    std::string message;      // why the history cannot be used, in a sentence for the user
    bool canRecover = false;  // it is damaged, and what can be read can be brought over

    bool operator==(const ModeUnavailable&) const = default;
};
enum class PlainMode {
    starting,    // the history is being opened
    onboarding,  // the first-run screens
    setup,       // no location has been checked yet
    example,     // generated history
    tracking,    // the user's own history
};
using AppMode = std::variant<PlainMode, ModeUnavailable>;

/// The pages, in the order of the navigation.
enum class Destination { overview, activity, history, trends, locations };

/// The texts by which pages are known.
[[nodiscard]] std::string_view rawText(Destination destination);
[[nodiscard]] std::optional<Destination> destinationFrom(std::string_view rawText);

}  // namespace brindle
