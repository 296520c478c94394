#include "cli/TrendsCommand.h"

#include "analysis/EstimateSummary.h"
#include "cli/CSVRows.h"
#include "cli/ChangeTable.h"
#include "cli/DayWord.h"
#include "cli/LocationNames.h"
#include "cli/PlaceWord.h"
#include "cli/TrendsChart.h"
#include "cli/TrendsCoding.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>

namespace brindle {
namespace {

constexpr std::size_t contributorsShown = 5;

/// How a drive filled in the range, and how it will.
struct DriveOutlook {
    VolumeReading drive;
    Forecast forecast;
    std::optional<Reconciliation> moved;
};

struct Findings {
    Trend trend;
    std::vector<FolderSummary> contributors;
    std::vector<DriveOutlook> drives;
};

std::vector<DriveOutlook> outlooksOf(const Trend& trend, const HistorySnapshot& snapshot,
                                     const LocationScope& scope, HistorySource& source,
                                     const Calendar& calendar) {
    std::vector<DriveOutlook> outlooks;
    const auto locations = snapshot.locationsIn(scope);
    const LocalDay first = calendar.addingDays(trend.figures.first, -snapshot.retentionDays);
    for (const VolumeReading& drive : snapshot.volumes) {
        if (std::ranges::find(locations, drive.id, &TrackedLocation::volumeID) == locations.end()) continue;
        const auto samples = source.capacitySamples(drive.id, first, snapshot.today).get();
        outlooks.push_back(
            {.drive = drive,
             .forecast = forecast(samples, snapshot.today, calendar),
             .moved = reconcile(snapshot, samples, trend.figures.first, trend.figures.last, calendar)});
    }
    return outlooks;
}

/// "+12.4 GB added, −3.0 GB freed in 5 files, net +9.4 GB".
std::string sumText(const ChangeTotals& totals, const Output& output) {
    const std::int64_t net = totals.net();
    const auto style = net < 0 ? TextStyle::freed : TextStyle::added;
    return filled(translated("{0}, net {1}"), totalsText(totals, output),
                  net == 0 ? signedByteAmount(0) : output.styled(style, signedByteAmount(net)));
}

/// Captions and what they stand for, below each other.
class Facts {
public:
    void add(const char* caption, const std::string& text) { table_.add({Cell(caption), Cell(text)}); }
    void print(Output& output) const { table_.print(output); }

private:
    Table table_{ColumnKind::word, ColumnKind::word};
};

std::string trackedText(const RangeFigures& figures) {
    if (!figures.trackedAtEnd) return translated("not known");
    if (!figures.trackedBefore) return filled(translated("{} at the end"), byteAmount(*figures.trackedAtEnd));
    return filled(translated("{0} at the beginning, {1} at the end"), byteAmount(*figures.trackedBefore),
                  byteAmount(*figures.trackedAtEnd));
}

void printFacts(Output& output, const Trend& trend) {
    Facts facts;
    const RangeFigures& figures = trend.figures;
    if (figures.totals) facts.add(translated("Changes"), sumText(*figures.totals, output));
    if (const auto* before = std::get_if<RangeFigures>(&trend.before))
        facts.add(translated("Days before"), sumText(*before->totals, output));
    facts.add(translated("Tracked size"), trackedText(figures));
    if (figures.estimated)
        facts.add(
            translated("Estimated"),
            filled(translatedCount("about {0} in {1} file, not counted above",
                                   "about {0} in {1} files, not counted above", figures.estimated->files),
                   byteAmount(figures.estimated->bytes), groupedNumber(figures.estimated->files)));
    facts.add(translated("Days"), coverageText(figures.days));
    facts.print(output);
    if (const auto* none = std::get_if<NoComparison>(&trend.before)) output.paragraph(none->sentence, 2);
}

void print(const Context& context, const Findings& findings, const HistorySnapshot& snapshot,
           const LocationScope& scope) {
    Output& output = context.output;
    const Trend& trend = findings.trend;
    const LocationNames names(snapshot.locations);
    const std::string title = filled(translated("{0} days to {1}"), groupedNumber(dayCount(trend.range)),
                                     context.calendar.longLabel(trend.figures.last));
    output.line(
        output.emphasized(scope.location ? fileNameText(names.of(*scope.location)) + ": " + title : title));
    printChart(output, trend, snapshot, scope, context.calendar);
    output.line();
    printFacts(output, trend);
    for (const ScopeStep& step : trend.steps) output.paragraph(sentence(step, snapshot, context.calendar), 2);
    if (const auto note = comparisonNote(trend, snapshot); !note.empty()) output.paragraph(note, 2);
    if (!findings.contributors.empty()) {
        output.line();
        output.line(translated("Largest contributors:"));
        folderTable(findings.contributors, names).print(output);
    }
    const bool isNow = trend.figures.last == snapshot.today;
    for (const auto& [drive, outlook, moved] : findings.drives) {
        if (!isNow && !moved) continue;
        output.line();
        output.heading(drive.name, drive.mountPath);
        // What is to come goes with the days that lead to it, and not with those of some time ago.
        if (isNow) output.paragraph(sentence(outlook, context.calendar), 2);
        if (!moved) continue;
        for (const std::string& text : reconciliationSentences(*moved, context.calendar))
            output.paragraph(text, 2);
    }
}

nlohmann::ordered_json coded(const Findings& findings, const LocationScope& scope, const Calendar& calendar) {
    nlohmann::ordered_json json = findings.trend;
    json["location"] = scope.location ? nlohmann::ordered_json(*scope.location) : nlohmann::ordered_json();
    json["contributors"] = findings.contributors;
    json["drives"] = nlohmann::ordered_json::array();
    for (const auto& [drive, outlook, moved] : findings.drives) {
        nlohmann::ordered_json entry = {{"id", drive.id}, {"name", drive.name}, {"forecast", coded(outlook)}};
        entry["forecast"]["sentence"] = sentence(outlook, calendar);
        entry["reconciliation"] = nullptr;
        if (moved) {
            entry["reconciliation"] = coded(*moved);
            entry["reconciliation"]["sentences"] = reconciliationSentences(*moved, calendar);
        }
        json["drives"].push_back(std::move(entry));
    }
    return json;
}

void printCSV(Output& output, const Trend& trend) {
    using storageStatement::Cell;
    printRow(output, {"Date", "State", "Partial", "Added in bytes", "Freed in bytes", "Files",
                      "Estimated bytes", "Estimated files", "Tracked bytes"});
    for (const auto& [figures, trackedBytes] : trend.days) {
        const DayRecorded* recorded = figures.recorded();
        const DayEstimated* estimated = figures.estimated();
        const auto known = [](const auto* source, std::int64_t number) {
            return source != nullptr ? Cell(number) : Cell("");
        };
        const ChangeTotals totals = recorded != nullptr ? recorded->totals : ChangeTotals{};
        const EstimateTotals estimate = estimated != nullptr ? estimated->totals : EstimateTotals{};
        std::string_view state = "recorded";
        if (estimated != nullptr) state = "estimated";
        if (figures.gap) state = rawText(*figures.gap);
        printRow(output, {figures.day.text(), state, recorded != nullptr && recorded->partial ? "yes" : "",
                          known(recorded, totals.added), known(recorded, totals.freed),
                          known(recorded, totals.count), known(estimated, estimate.bytes),
                          known(estimated, estimate.files), trackedBytes ? Cell(*trackedBytes) : Cell("")});
    }
}

}  // namespace

ExitCode runTrends(const Context& context, const TrendsOptions& options) {
    refuseTwoForms(context, options.asCSV);
    const auto source = context.openSource();
    const HistorySnapshot snapshot = source->snapshot().get();
    const LocalDay day = pastDayNamed(options.day, context.calendar, snapshot.today);
    const LocationScope scope = scopeNamed(options.location, snapshot);
    const TrendRange range = trendRangeFrom(options.range).value_or(TrendRange::week);

    Findings findings{.trend = trend(snapshot, scope, day, range, context.calendar), .contributors = {}};
    const RangeFigures& figures = findings.trend.figures;
    const bool isKnown = figures.totals || figures.estimated;
    if (!options.asCSV) {
        findings.contributors =
            source->periodContributors(figures.first, figures.last, scope, contributorsShown).get();
        findings.drives = outlooksOf(findings.trend, snapshot, scope, *source, context.calendar);
    }

    if (options.asCSV)
        printCSV(context.output, findings.trend);
    else if (context.asJson)
        context.output.json(coded(findings, scope, context.calendar));
    else if (isKnown)
        print(context, findings, snapshot, scope);
    else
        context.output.sentence(
            filled(translatedCount("No check covers the {0} day to {1}.",
                                   "No check covers the {0} days to {1}.", dayCount(range)),
                   groupedNumber(dayCount(range)), context.calendar.longLabel(day)));
    return isKnown ? ExitCode::success : ExitCode::nothingFound;
}

}  // namespace brindle
