#include "cli/WrappedText.h"

#include "model/DisplayWidth.h"

#include <algorithm>

namespace brindle {

std::vector<std::string> wrapped(std::string_view text, std::optional<std::size_t> columns) {
    if (!columns) return {std::string(text)};
    std::vector<std::string> lines(1);
    std::size_t width = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, std::min(text.find(' '), text.size()));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const std::size_t wordWidth = displayWidth(word);
        if (width > 0 && width + 1 + wordWidth > *columns) {
            lines.emplace_back();
            width = 0;
        }
        if (width > 0) {
            lines.back() += ' ';
            ++width;
        }
        lines.back() += word;
        width += wordWidth;
    }
    return lines;
}

}  // namespace brindle
