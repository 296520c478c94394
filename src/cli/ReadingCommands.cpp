#include "cli/ChangesCommand.h"
#include "cli/Commands.h"
#include "cli/DayCommand.h"
#include "cli/DrivesCommand.h"
#include "cli/LocationsCommand.h"
#include "cli/StatusCommand.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace brindle {
namespace {

void addLocations(CLI::App& app, Command& chosen) {
    app.add_subcommand("locations", "List the included locations")->callback([&chosen] {
        chosen = runLocations;
    });
}

void addDrives(CLI::App& app, Command& chosen) {
    app.add_subcommand("drives", "List the mounted drives and how full they are")->callback([&chosen] {
        chosen = runDrives;
    });
}

void addStatus(CLI::App& app, Command& chosen) {
    app.add_subcommand("status", "Show every location, today's changes and the drives")->callback([&chosen] {
        chosen = runStatus;
    });
}

void addDay(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("day", "Show what is known of a day");
    const auto day = std::make_shared<std::string>("today");
    command->add_option("DAY", *day, "The day: 2026-03-07, today, yesterday (default: today)")->type_name("");
    command->callback(choosing(chosen, runDay, day));
}

void addChanges(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("changes", "Show what changed on a day, or in a period");
    const auto options = std::make_shared<ChangesOptions>();
    addPeriodOptions(*command, options->period);
    command->add_option("--limit", options->limit, "How many changes to list, largest first; 0 for all")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str()
        ->type_name("N");
    command->add_option("FOLDER", options->folder, "Only what lies in this folder")
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runChanges, options));
}

}  // namespace

void addReadingCommands(CLI::App& app, Command& chosen) {
    addLocations(app, chosen);
    addDrives(app, chosen);
    addStatus(app, chosen);
    addDay(app, chosen);
    addChanges(app, chosen);
}

}  // namespace brindle
