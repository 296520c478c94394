#include "example/NameTemplates.h"

#include <fmt/format.h>

namespace brindle {
namespace {

/// Puts what `text()` gives in the place of every occurrence, first to last.
template <class Text>
void replaceEach(std::string& name, std::string_view placeholder, Text text) {
    for (auto at = name.find(placeholder); at != name.npos; at = name.find(placeholder))
        name.replace(at, placeholder.size(), text());
}

}  // namespace

std::string expandedName(std::string_view nameTemplate, const LocalDay& day, UnixTime observedAt,
                         const Calendar& calendar, RandomSource& random) {
    std::string name(nameTemplate);
    const auto second = random.below(60);
    replaceEach(name, "{date}", [&] { return day.text(); });
    replaceEach(name, "{time}", [&] {
        const TimeOfDay time = calendar.timeOfDay(observedAt);
        return fmt::format("{:02}.{:02}.{:02}", time.hour, time.minute, second);
    });
    replaceEach(name, "{mmdd}", [&] { return fmt::format("{:02}{:02}", day.month, day.day); });
    replaceEach(name, "{n4}", [&] { return fmt::format("{:04}", random.below(9999) + 1); });
    replaceEach(name, "{n3}", [&] { return fmt::format("{:03}", random.below(240) + 1); });
    replaceEach(name, "{n}", [&] { return fmt::format("{:02}", random.below(40) + 1); });
    replaceEach(name, "{hex}", [&] {
        std::string digits;
        for (int i = 0; i < 8; ++i) digits += "0123456789abcdef"[random.below(16)];
        return digits;
    });
    return name;
}

}  // namespace brindle
