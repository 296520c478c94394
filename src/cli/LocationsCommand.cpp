#include "cli/LocationsCommand.h"

#include "cli/ValueCoding.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <fmt/format.h>

namespace brindle {
namespace {

const char* statusWord(LocationStatus status) {
    switch (status) {
        case LocationStatus::active:
            return translated("active");
        case LocationStatus::checking:
            return translated("checking");
        case LocationStatus::paused:
            return translated("paused");
        case LocationStatus::needsAccess:
            return translated("needs access");
        case LocationStatus::disconnected:
            break;
    }
    return translated("disconnected");
}

std::string lastCheckText(const LocationRecord& record, const Calendar& calendar) {
    if (!record.lastCheckAt) return translated("Not checked yet");
    return filled(translated("{}, last checked {}"), byteAmount(record.trackedBytes),
                  calendar.timeLabel(*record.lastCheckAt));
}

void print(const Context& context, const LocationRecord& record, std::size_t unreadable) {
    Output& output = context.output;
    output.heading(record.name, record.path);
    output.paragraph(
        fmt::format("{}, {}", lastCheckText(record, context.calendar), statusWord(record.status)), 2);
    if (unreadable == 0) return;
    const auto count = static_cast<std::int64_t>(unreadable);
    output.line(
        filled(translatedCount("  {} folder couldn't be read", "  {} folders couldn't be read", count),
               groupedNumber(count)));
}

struct ListedLocation {
    LocationRecord record;
    std::vector<UnreadableFolder> unreadable;
};

std::vector<ListedLocation> includedLocations(const Context& context) {
    std::vector<ListedLocation> included;
    if (context.isExample) {
        const ExampleHistory example(context.calendar);
        for (const LocationRecord& record : example.locationRecords()) included.push_back({record, {}});
        return included;
    }
    HistoryStore store = context.openHistory();
    for (LocationRecord& record : store.loadLocations().get()) {
        if (record.removedAt) continue;
        auto unreadable = store.unreadableFolders(record.id).get();
        included.push_back({std::move(record), std::move(unreadable)});
    }
    return included;
}

}  // namespace

ExitCode runLocations(const Context& context) {
    auto locations = nlohmann::ordered_json::array();
    for (const auto& [record, unreadable] : includedLocations(context)) {
        if (!context.asJson) print(context, record, unreadable.size());
        nlohmann::ordered_json location = record;
        location["unreadableFolders"] = unreadable;
        locations.push_back(std::move(location));
    }
    if (context.asJson)
        context.output.json(locations);
    else if (locations.empty())
        context.output.sentence(translated("No locations included yet."));
    return locations.empty() ? ExitCode::nothingFound : ExitCode::success;
}

}  // namespace brindle
