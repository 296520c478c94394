#pragma once

#include "model/Calendar.h"
#include "model/Change.h"
#include "model/HistorySource.h"
#include "model/LocalDay.h"

#include <cstdint>
#include <optional>
#include <string>

namespace brindle {

/// What a statement will contain, before it is written.
struct ExportPlan {
    std::string id;  // a fresh UUID, so that two plans for the same days are told apart
    LocalDay first;
    LocalDay last;
    LocationScope scope;
    std::string scopeName;           // "this location", "all locations"
    std::int64_t recordCount = 0;    // measured changes, each a row
    std::int64_t estimateFiles = 0;  // files behind the estimated rows, which follow
    bool isExample = false;

    bool operator==(const ExportPlan&) const = default;
};

/// The plan for the days from `first` through `last`; nothing when neither changes nor estimates are
/// recorded. Counts them first, and waits for that: not for a thread that draws. Throws the source's error.
[[nodiscard]] std::optional<ExportPlan> planExport(HistorySource& source, const LocalDay& first,
                                                   const LocalDay& last, const LocationScope& scope,
                                                   bool isExample);

/// What to say when there is no plan.
[[nodiscard]] std::string nothingToExport();

/// What the plan's statement includes, in sentences.
[[nodiscard]] std::string planSummary(const ExportPlan& plan, const Calendar& calendar);

/// What the plan's statement is called unless the user says otherwise.
[[nodiscard]] std::string suggestedFileName(const ExportPlan& plan);

}  // namespace brindle
