#include "cli/DayCommand.h"

#include "analysis/DaySentence.h"
#include "analysis/PartialDay.h"
#include "cli/CSVRows.h"
#include "cli/ChangeTable.h"
#include "cli/DayWord.h"
#include "cli/LocationNames.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Packages.h"
#include "model/Translation.h"

#include <fmt/format.h>

namespace brindle {
namespace {

constexpr std::size_t contributorsShown = 10;

struct LocationOnDay {
    TrackedLocation location;
    DayState state;
};

/// The locations that are behind the day's state: those estimated for it, or else those tracked on it.
std::vector<LocationOnDay> locationsOn(const LocalDay& day, const DayState& whole,
                                       const HistorySnapshot& snapshot) {
    std::vector<LocationOnDay> found;
    for (const TrackedLocation& location : snapshot.locations) {
        const DayState state = dayState(snapshot, day, {location.id});
        const bool isBehindIt = std::holds_alternative<DayEstimated>(whole)
                                    ? std::holds_alternative<DayEstimated>(state)
                                    : isTracked(location, day);
        if (isBehindIt) found.push_back({location, state});
    }
    return found;
}

/// What changed on the day: measured, or else estimated.
std::vector<FileChange> changesOf(const DayState& state, const LocalDay& day, HistorySource& source) {
    if (std::holds_alternative<DayRecorded>(state)) return source.dayChanges(day, {}).get();
    if (std::holds_alternative<DayEstimated>(state)) return source.periodEstimates(day, day, {}).get();
    return {};
}

std::vector<TrackedLocation> trackedOf(const std::vector<LocationOnDay>& locations) {
    std::vector<TrackedLocation> tracked;
    tracked.reserve(locations.size());
    for (const LocationOnDay& one : locations) tracked.push_back(one.location);
    return tracked;
}

std::string stateText(const DayState& state, const Output& output) {
    if (const auto* recorded = std::get_if<DayRecorded>(&state))
        return recorded->totals.count == 0 ? translated("no changes") : totalsText(recorded->totals, output);
    if (const auto* estimated = std::get_if<DayEstimated>(&state))
        return filled(
            translatedCount("about {0} in {1} file", "about {0} in {1} files", estimated->totals.files),
            byteAmount(estimated->totals.bytes), groupedNumber(estimated->totals.files));
    return translated("no check");
}

void printContributors(Output& output, const std::vector<FolderSummary>& folders,
                       const LocationNames& names) {
    if (folders.empty()) return;
    output.line();
    output.line(translated("Largest contributors:"));
    folderTable(folders, names).print(output);
}

void print(Output& output, const std::string& dayLabel, const DayState& state, const std::string& sentence,
           const std::vector<LocationOnDay>& locations, const std::vector<std::string>& gaps) {
    output.line(fmt::format("{}: {}", output.emphasized(dayLabel), stateText(state, output)));
    if (!sentence.empty()) output.paragraph(sentence);
    if (std::holds_alternative<DayEstimated>(state))
        output.line(translated("An estimate from the dates of files: no check covers this day."));
    else
        for (const std::string& gap : gaps) output.paragraph(gap);
    output.line();
    for (const LocationOnDay& one : locations)
        output.line(fmt::format("  {}: {}", fileNameText(one.location.name), stateText(one.state, output)));
}

nlohmann::ordered_json coded(const LocationOnDay& one) {
    nlohmann::ordered_json json = {{"id", one.location.id}, {"name", one.location.name}};
    json.update(nlohmann::ordered_json(one.state));
    return json;
}

void printCSV(Output& output, const LocalDay& day, const std::vector<FolderSummary>& folders,
              const LocationNames& names, const char* source) {
    printRow(output, {"Date", "Folder", "Added in bytes", "Freed in bytes", "Files", "Source"});
    for (const auto& [ref, totals] : folders)
        printRow(output, {day.text(), names.path(ref), totals.added, totals.freed, totals.count, source});
}

}  // namespace

ExitCode runDay(const Context& context, const DayOptions& options) {
    refuseTwoForms(context, options.asCSV);
    const auto history = context.openSource();
    const HistorySnapshot snapshot = history->snapshot().get();
    const LocalDay day = dayNamed(options.day, context.calendar, snapshot.today);
    const DayState state = dayState(snapshot, day, {});
    const bool isFuture = std::holds_alternative<DayFuture>(state);
    const bool isEstimated = std::holds_alternative<DayEstimated>(state);
    const bool isKnown = !isFuture && !std::holds_alternative<DayWithoutCheck>(state);

    const auto locations = locationsOn(day, state, snapshot);
    const auto changes = changesOf(state, day, *history);
    const auto contributors = largestFirst(groupedByFolder(changes, contributorDepth), contributorsShown);
    const std::string sentence =
        changes.empty() ? std::string()
                        : changeSentence(changes, trackedOf(locations),
                                         isEstimated ? ChangeSource::estimated : ChangeSource::measured);
    const std::string label = context.calendar.longLabel(day);
    const LocationNames names(snapshot.locations);

    if (options.asCSV) {
        const char* measured = snapshot.isExample ? "Example" : "Measured";
        const char* estimated = snapshot.isExample ? "Example estimate" : "Estimated";
        printCSV(context.output, day, contributors, names, isEstimated ? estimated : measured);
    } else if (context.asJson) {
        nlohmann::ordered_json json = {{"day", day}};
        json.update(nlohmann::ordered_json(state));
        if (!sentence.empty()) json["sentence"] = sentence;
        json["locations"] = nlohmann::ordered_json::array();
        for (const LocationOnDay& one : locations) json["locations"].push_back(coded(one));
        json["contributors"] = contributors;
        context.output.json(json);
    } else if (isKnown) {
        print(context.output, label, state, sentence, locations, partialSentences(snapshot, {}, day));
        printContributors(context.output, contributors, names);
    } else {
        context.output.sentence(
            filled(isFuture ? translated("{} is still to come.") : translated("No check covers {}."), label));
    }
    return isKnown ? ExitCode::success : ExitCode::nothingFound;
}

}  // namespace brindle
