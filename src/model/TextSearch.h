#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// A text that a user looks for in names, wherever it stands in them, whatever the case and the diacritics:
/// "resume" is in "Résumé.pdf". Case is that of the locale: in Turkish "i" goes with "İ" and "ı" with "I".
/// Bytes of a name that are not UTF-8 count as the U+FFFD in whose place they are shown.
class TextSearch {
public:
    /// `text` as typed: white space and line breaks at its ends do not count. `locale` as userLocale() has
    /// it.
    TextSearch(std::string_view text, const std::string& locale);

    /// Whether nothing is looked for, which is in every name.
    [[nodiscard]] bool isEmpty() const { return folded_.empty(); }

    [[nodiscard]] bool isIn(std::string_view name) const;

private:
    /// Nothing for a name that is long, or that cannot be folded character by character.
    [[nodiscard]] std::optional<bool> isInShortName(std::string_view name) const;

    bool isTurkic_;
    std::u16string folded_;
};

}  // namespace brindle
