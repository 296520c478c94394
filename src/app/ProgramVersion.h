#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// A version of the program: numbers with dots between them, and for one that comes before a release "~", a
/// word and perhaps a number ("1.4~beta2"). Numbers compare by value, from the left, and one that is missing
/// is 0, so that 1.4 equals 1.4.0. What comes before a release is older than it; among those the words
/// compare letter by letter, then their numbers.
class ProgramVersion {
public:
    /// Nothing for text of another form.
    [[nodiscard]] static std::optional<ProgramVersion> from(std::string_view text);

    [[nodiscard]] const std::string& text() const { return text_; }

    std::weak_ordering operator<=>(const ProgramVersion& other) const;
    bool operator==(const ProgramVersion& other) const { return *this <=> other == 0; }

private:
    std::string text_;
    std::vector<std::uint32_t> numbers_;  // without zeros at the end
    bool isRelease_ = true;
    std::string word_;
    std::uint32_t wordNumber_ = 0;
};

}  // namespace brindle
