#include "cli/SizeWord.h"

#include "cli/Context.h"
#include "model/FileNameText.h"
#include "model/Translation.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace brindle {
namespace {

struct Unit {
    std::string_view name;  // in small letters
    double bytes;
};

constexpr std::array<Unit, 14> units = {{{"", 1},
                                         {"b", 1},
                                         {"byte", 1},
                                         {"bytes", 1},
                                         {"kb", 1e3},
                                         {"mb", 1e6},
                                         {"gb", 1e9},
                                         {"tb", 1e12},
                                         {"pb", 1e15},
                                         {"kib", 0x1p10},
                                         {"mib", 0x1p20},
                                         {"gib", 0x1p30},
                                         {"tib", 0x1p40},
                                         {"pib", 0x1p50}}};

std::optional<std::int64_t> parsed(std::string_view text) {
    // Neither a sign nor "inf".
    if (text.empty() || text[0] < '0' || text[0] > '9') return {};
    double number = 0;
    const auto end = std::from_chars(text.begin(), text.end(), number, std::chars_format::fixed);
    if (end.ec != std::errc()) return {};
    std::string unit;
    for (const char c : std::string_view(end.ptr, text.end()))
        if (c != ' ' || !unit.empty()) unit += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    for (const Unit& known : units) {
        if (known.name != unit) continue;
        const double bytes = std::round(number * known.bytes);
        if (bytes >= 0x1p63) return {};
        return static_cast<std::int64_t>(bytes);
    }
    return {};
}

}  // namespace

std::int64_t sizeNamed(const std::string& text) {
    if (const auto bytes = parsed(text)) return *bytes;
    throw UsageError(filled(translated("“{}” isn't a size. Give one like 500MB, 1.5GB, 2GiB or 4096."),
                            fileNameText(text)));
}

}  // namespace brindle
