#include "cli/ValueChecks.h"

#include "model/FileNameText.h"
#include "model/Translation.h"

#include <algorithm>
#include <charconv>
#include <fmt/ranges.h>

namespace brindle {

CLI::Validator wholeNumberFrom(int least) {
    const auto objection = [least](const std::string& text) -> std::string {
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc() && end == text.data() + text.size() && number >= least) return "";
        return filled(translated("“{0}” isn't a whole number from {1}."), fileNameText(text), least);
    };
    return CLI::Validator(objection, "");
}

CLI::Validator oneOf(const std::vector<std::string>& words) {
    const auto objection = [words](const std::string& text) -> std::string {
        if (std::ranges::find(words, text) != words.end()) return "";
        return filled(translated("“{0}” is none of these: {1}."), fileNameText(text), fmt::join(words, ", "));
    };
    return CLI::Validator(objection, fmt::format("{{{}}}", fmt::join(words, ",")));
}

}  // namespace brindle
