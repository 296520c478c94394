#include "cli/ChangesCommand.h"
#include "cli/Commands.h"
#include "cli/DayCommand.h"
#include "cli/DrivesCommand.h"
#include "cli/ExportCommand.h"
#include "cli/GrewCommand.h"
#include "cli/LocationsCommand.h"
#include "cli/StatusCommand.h"
#include "cli/TrendsCommand.h"
#include "cli/ValueChecks.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace brindle {
namespace {

void addCSV(CLI::App& command, bool& asCSV) {
    command.add_flag("--csv", asCSV, translated("Print the rows as CSV"));
}

void addLocations(CLI::App& app, Command& chosen) {
    app.add_subcommand("locations", translated("List the included locations"))->callback([&chosen] {
        chosen = runLocations;
    });
}

void addDrives(CLI::App& app, Command& chosen) {
    app.add_subcommand("drives", translated("List the mounted drives and how full they are"))
        ->callback([&chosen] { chosen = runDrives; });
}

void addStatus(CLI::App& app, Command& chosen) {
    app.add_subcommand("status", translated("Show every location, today's changes and the drives"))
        ->callback([&chosen] { chosen = runStatus; });
}

void addDay(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("day", translated("Show what is known of a day"));
    const auto options = std::make_shared<DayOptions>();
    command
        ->add_option("DAY", options->day,
                     translated("The day: 2026-03-07, today, yesterday (default: today)"))
        ->type_name("");
    addCSV(*command, options->asCSV);
    command->callback(choosing(chosen, runDay, options));
}

void addChanges(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("changes", translated("Show what changed on a day, or in a period"));
    const auto options = std::make_shared<ChangesOptions>();
    addPeriodOptions(*command, options->period);
    auto* folder =
        command->add_option("--folder", options->folder, translated("Only what lies in this folder"))
            ->type_name("FOLDER");
    command
        ->add_option("--search", options->search,
                     translated("Only what has this in its name or in that of a folder"))
        ->type_name("TEXT");
    command->add_flag("--added", options->isAdded, translated("Only what was added or grew"));
    command->add_flag("--freed", options->isFreed, translated("Only what shrank or was removed"));
    command->add_option("--sort", options->sort, translated("largest, newest or name (default: largest)"))
        ->check(oneOf({"largest", "newest", "name"}))
        ->type_name("ORDER");
    auto* files =
        command->add_flag("--files", options->isFileList, translated("One list of files (the default)"));
    command
        ->add_flag("--folders", options->isByFolder,
                   translated("What changed in each folder, one level down"))
        ->excludes(files);
    command
        ->add_option(
            "--limit", options->limit,
            translated("How many rows to list; 0 for all (default: 20, and all with --json or --csv)"))
        ->check(wholeNumberFrom(0))
        ->type_name("N");
    command
        ->add_option("--page", options->page, translated("Which of the pages of so many rows (default: 1)"))
        ->check(wholeNumberFrom(1))
        ->type_name("N");
    addCSV(*command, options->asCSV);
    command->add_option("FOLDER", options->folder, translated("The same as --folder"))
        ->check(emptyPathObjection)
        ->excludes(folder->check(emptyPathObjection));
    command->callback(choosing(chosen, runChanges, options));
}

void addTrends(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "trends", translated("Show a week, a month or a quarter as a chart, with its figures"));
    const auto options = std::make_shared<TrendsOptions>();
    command->add_option("RANGE", options->range, translated("week, month or quarter: 7, 30 or 90 days"))
        ->required()
        ->check(oneOf({"week", "month", "quarter"}))
        ->type_name("");
    command
        ->add_option("--day", options->day,
                     translated("The last day: 2026-03-07, today, yesterday (default: today)"))
        ->type_name("DAY");
    addCSV(*command, options->asCSV);
    command
        ->add_option("LOCATION", options->location, translated("Only this location, by its path or its name"))
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runTrends, options));
}

void addGrew(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("grew", translated("Show which folders grew, as a tree"));
    const auto options = std::make_shared<GrewOptions>();
    addPeriodOptions(*command, options->period);
    command
        ->add_option(
            "--over", options->over,
            translated(
                "Only what grew by more than this, like 5GB; exit with 1 when something did, else with 0"))
        ->type_name("SIZE");
    addCSV(*command, options->asCSV);
    command->add_option("FOLDER", options->folder, translated("Only what lies in this folder"))
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runGrew, options));
}

void addExport(CLI::App& app, Command& chosen) {
    auto* command =
        app.add_subcommand("export", translated("Write the changes of a day or a period to a CSV file"));
    const auto options = std::make_shared<ExportOptions>();
    addPeriodOptions(*command, options->period);
    command->add_option("-o,--output", options->output, translated("The file; - for standard output"))
        ->check(emptyPathObjection)
        ->type_name("FILE");
    command
        ->add_option("LOCATION", options->location, translated("Only this location, by its path or its name"))
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runExport, options));
}

}  // namespace

void addReadingCommands(CLI::App& app, Command& chosen) {
    addLocations(app, chosen);
    addDrives(app, chosen);
    addStatus(app, chosen);
    addDay(app, chosen);
    addChanges(app, chosen);
    addTrends(app, chosen);
    addGrew(app, chosen);
    addExport(app, chosen);
}

}  // namespace brindle
