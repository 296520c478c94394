#include "export/ExportPlan.h"

#include "export/StorageStatement.h"
#include "model/NumberText.h"
#include "model/RandomUUID.h"
#include "model/Translation.h"

namespace brindle {
namespace {

std::string counted(const char* one, const char* many, std::int64_t count) {
    return filled(translatedCount(one, many, count), groupedNumber(count));
}

std::string dayPart(const ExportPlan& plan, const Calendar& calendar) {
    if (plan.first == plan.last) return filled(translated("on {}"), calendar.mediumLabel(plan.first));
    return filled(translated("from {} to {}"), calendar.mediumLabel(plan.first),
                  calendar.mediumLabel(plan.last));
}

}  // namespace

std::optional<ExportPlan> planExport(HistorySource& source, const LocalDay& first, const LocalDay& last,
                                     const LocationScope& scope, bool isExample) {
    const ChangeCount recorded = source.countChanges(first, last, scope, ChangeSource::measured).get();
    const ChangeCount estimated = source.countChanges(first, last, scope, ChangeSource::estimated).get();
    if (recorded.rows < 1 && estimated.files < 1) return {};
    return ExportPlan{.id = randomUUID(),
                      .first = first,
                      .last = last,
                      .scope = scope,
                      .scopeName = scope.location ? translated("this location") : translated("all locations"),
                      .recordCount = recorded.rows,
                      .estimateFiles = estimated.files,
                      .isExample = isExample};
}

std::string nothingToExport() {
    return translated("No changes are recorded for this scope, so there's nothing to export.");
}

std::string planSummary(const ExportPlan& plan, const Calendar& calendar) {
    std::string summary =
        filled(translated("Includes {} {} in {}. Search and direction filters don't apply."),
               counted("{} recorded change", "all {} recorded changes", plan.recordCount),
               dayPart(plan, calendar), plan.scopeName);
    if (plan.estimateFiles > 0)
        summary += " " + counted(
                             "Estimates from file dates for {} file before Brindle started are listed "
                             "separately, marked Estimated.",
                             "Estimates from file dates for {} files before Brindle started are listed "
                             "separately, marked Estimated.",
                             plan.estimateFiles);
    if (plan.isExample)
        summary += std::string(" ") + translated("These are example records, and the statement says so.");
    return summary;
}

std::string suggestedFileName(const ExportPlan& plan) {
    return storageStatement::fileName(plan.last, plan.isExample);
}

}  // namespace brindle
