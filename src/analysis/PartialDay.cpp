#include "analysis/PartialDay.h"

#include "model/DayState.h"
#include "model/FileNameText.h"
#include "model/Translation.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace brindle {

std::vector<std::string> partialSentences(const HistorySnapshot& snapshot, const LocationScope& scope,
                                          const LocalDay& day) {
    std::vector<std::string> unchecked;
    std::vector<std::string> unreadable;
    for (const TrackedLocation& location : snapshot.locationsIn(scope)) {
        if (!isTracked(location, day)) continue;
        const DayState state = dayState(snapshot, day, {location.id});
        const auto* recorded = std::get_if<DayRecorded>(&state);
        const std::string name = fmt::format("“{}”", fileNameText(location.name));
        if (recorded == nullptr)
            unchecked.push_back(name);
        else if (recorded->partial)
            unreadable.push_back(name);
    }
    std::vector<std::string> sentences;
    const auto tell = [&sentences](const char* text, const std::vector<std::string>& names) {
        if (!names.empty()) sentences.push_back(filled(text, fmt::join(names, ", ")));
    };
    tell(translated("The record is partial: no check of {} on this day."), unchecked);
    tell(translated("The record is partial: some folders of {} couldn't be read."), unreadable);
    return sentences;
}

}  // namespace brindle
