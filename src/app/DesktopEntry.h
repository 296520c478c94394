#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// The group "Desktop Entry" of a .desktop file. Everything else in the file, comments, other groups, unknown
/// keys and the order of the lines, stays as it is. Keys are read byte for byte; translated ones
/// ("Name[pl]") are keys of their own.
class DesktopEntry {
public:
    /// An entry without keys.
    DesktopEntry() = default;

    /// Nothing when the text is damaged: it does not begin with the group, comments aside, or has a line that
    /// is no comment, group or key.
    [[nodiscard]] static std::optional<DesktopEntry> parse(std::string_view text);

    /// What stands behind the "=", escapes included. Of several lines with one key the last counts.
    [[nodiscard]] std::optional<std::string> value(std::string_view key) const;
    /// Whether the key says true, in either of its spellings.
    [[nodiscard]] bool isTrue(std::string_view key) const;
    /// A list of texts that end in ";"; empty when the key is missing.
    [[nodiscard]] std::vector<std::string> list(std::string_view key) const;

    void set(std::string_view key, std::string_view value);
    void remove(std::string_view key);

    [[nodiscard]] std::string text() const;

private:
    std::vector<std::string> before_;  // lines
    std::vector<std::string> lines_{"[Desktop Entry]"};
    std::vector<std::string> after_;
};

/// The program and its arguments that the value of an "Exec" key stands for, field codes ("%U") left out.
/// Nothing when it has no program or a quotation without end.
[[nodiscard]] std::optional<std::vector<std::string>> commandOfExec(std::string_view value);

/// The value of an "Exec" key that stands for this program and its arguments.
[[nodiscard]] std::string execOfCommand(const std::vector<std::string>& command);

}  // namespace brindle
