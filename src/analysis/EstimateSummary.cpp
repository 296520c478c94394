#include "analysis/EstimateSummary.h"

#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>

namespace brindle {

std::optional<EstimateSummary> estimateSummary(const HistorySnapshot& snapshot, const LocationScope& scope) {
    std::optional<EstimateSummary> summary;
    for (const TrackedLocation& location : snapshot.locations) {
        const auto days = snapshot.estimates.find(location.id);
        if (!scope.holds(location.id) || days == snapshot.estimates.end()) continue;
        for (const auto& [day, totals] : days->second) {
            if (totals.files < 1) continue;
            if (!summary) summary = {.totals = {}, .first = day, .last = day};
            summary->totals += totals;
            summary->first = std::min(summary->first, day);
            summary->last = std::max(summary->last, day);
        }
    }
    return summary;
}

std::string sentence(const EstimateSummary& summary, const Calendar& calendar) {
    const auto formatted = [&](const char* text, const auto&... days) {
        return filled(text, byteAmount(summary.totals.bytes), groupedNumber(summary.totals.files), days...);
    };
    if (summary.first == summary.last)
        return formatted(translatedCount("Estimated from file dates: {0} came on {2}, in {1} file.",
                                         "Estimated from file dates: {0} came on {2}, in {1} files.",
                                         summary.totals.files),
                         calendar.mediumLabel(summary.first));
    return formatted(translatedCount("Estimated from file dates: {0} came from {2} to {3}, in {1} file.",
                                     "Estimated from file dates: {0} came from {2} to {3}, in {1} files.",
                                     summary.totals.files),
                     calendar.mediumLabel(summary.first), calendar.mediumLabel(summary.last));
}

}  // namespace brindle
