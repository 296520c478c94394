#include "cli/PeriodOptions.h"

#include "cli/Context.h"
#include "cli/DayWord.h"
#include "model/Translation.h"

#include <CLI/CLI.hpp>

namespace brindle {
namespace {

void refuseContradictions(const PeriodOptions& options) {
    const bool hasRange = !options.from.empty() || !options.to.empty();
    if (int{!options.day.empty()} + int{!options.since.empty()} + int{hasRange} > 1)
        throw UsageError(translated("Give one of --day, --since, and --from with --to."));
    if (options.from.empty() && hasRange)
        throw UsageError(translated("--to needs the first day as well: --from DAY --to DAY."));
    if (options.to.empty() && hasRange)
        throw UsageError(
            translated("--from needs the last day as well: --from DAY --to DAY. For every day through today "
                       "there is --since DAY."));
}

}  // namespace

void addPeriodOptions(CLI::App& command, PeriodOptions& options) {
    const auto add = [&command](const char* name, std::string& value, const char* description) {
        command.add_option(name, value, description)->type_name("DAY");
    };
    add("--day", options.day, translated("The day: 2026-03-07, today, yesterday (default: today)"));
    add("--since", options.since, translated("Every day from this one through today"));
    add("--from", options.from, translated("The first day of a period, together with --to"));
    add("--to", options.to, translated("The last day of the period"));
}

Period periodOf(const PeriodOptions& options, const Calendar& calendar, const LocalDay& today) {
    refuseContradictions(options);
    const auto named = [&](const std::string& text) { return pastDayNamed(text, calendar, today); };
    if (!options.since.empty()) return {named(options.since), today};
    if (options.from.empty()) {
        const LocalDay day = named(options.day.empty() ? "today" : options.day);
        return {day, day};
    }
    const Period period{.first = named(options.from), .last = named(options.to)};
    if (period.first > period.last)
        throw UsageError(filled(translated("The period ends before it begins: {} is after {}."),
                                period.first.text(), period.last.text()));
    return period;
}

std::string periodLabel(const Period& period, const Calendar& calendar) {
    if (period.first == period.last) return calendar.longLabel(period.first);
    return filled(translated("{0} to {1}"), calendar.longLabel(period.first),
                  calendar.longLabel(period.last));
}

}  // namespace brindle
