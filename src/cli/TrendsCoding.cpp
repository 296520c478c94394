#include "cli/TrendsCoding.h"

#include "cli/ValueCoding.h"

namespace brindle {
void to_json(nlohmann::ordered_json& json, const RangeFigures& figures) {
    const DayCounts& days = figures.days;
    json = {{"first", figures.first},
            {"last", figures.last},
            {"totals", orNull(figures.totals)},
            {"estimate", orNull(figures.estimated)},
            {"days",
             {{"recorded", days.recorded},
              {"partial", days.partial},
              {"estimated", days.estimated},
              {"noCheck", days.noCheck},
              {"notTracked", days.notTracked},
              {"notKept", days.notKept},
              {"future", days.future}}},
            {"trackedBytesBefore", orNull(figures.trackedBefore)},
            {"trackedBytesAtEnd", orNull(figures.trackedAtEnd)}};
}

void to_json(nlohmann::ordered_json& json, const TrendDay& day) {
    json = {{"day", day.figures.day}};
    json.update(nlohmann::ordered_json(day.figures.state));
    if (day.figures.gap) json["gap"] = rawText(*day.figures.gap);
    json["trackedBytes"] = orNull(day.trackedBytes);
}

void to_json(nlohmann::ordered_json& json, const ScopeStep& step) {
    json = {{"day", step.day}, {"location", step.location}, {"bytes", step.bytes}};
}

void to_json(nlohmann::ordered_json& json, const Trend& trend) {
    json = {{"range", rawText(trend.range)}, {"figures", trend.figures}};
    if (const auto* before = std::get_if<RangeFigures>(&trend.before)) {
        json["before"] = *before;
    } else {
        const auto& none = std::get<NoComparison>(trend.before);
        json["before"] = nullptr;
        json["noComparison"] = {{"reason", rawText(none.reason)}, {"sentence", none.sentence}};
    }
    json["days"] = trend.days;
    json["steps"] = trend.steps;
    json["trackedInPart"] = trend.trackedInPart;
}

nlohmann::ordered_json coded(const Forecast& forecast) {
    const auto* full = std::get_if<FullIn>(&forecast);
    if (full == nullptr)
        return {{"fullInDays", nullptr}, {"reason", rawText(std::get<NoForecast>(forecast))}};
    return {{"fullInDays", full->days},
            {"earliest", full->earliest},
            {"latest", full->latest},
            {"bytesPerDay", full->bytesPerDay},
            {"since", full->since}};
}

nlohmann::ordered_json coded(const Reconciliation& found) {
    return {{"from", found.from.readAt},
            {"to", found.to.readAt},
            {"usedMoved", found.usedMoved},
            {"trackedMoved", found.trackedMoved},
            {"unexplained", found.unexplained()},
            {"beyondVolumeMoved", orNull(found.beyondVolumeMoved)},
            {"purgeableMoved", orNull(found.purgeableMoved)},
            {"snapshotsMoved", orNull(found.snapshotsMoved)},
            {"isResized", found.isResized}};
}

}  // namespace brindle
