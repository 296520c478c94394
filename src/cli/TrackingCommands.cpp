#include "cli/CheckCommand.h"
#include "cli/Commands.h"
#include "cli/EstimatesCommand.h"
#include "cli/IncludeCommand.h"
#include "cli/RemoveCommand.h"
#include "cli/ValueChecks.h"
#include "cli/WatchCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <vector>

namespace brindle {
namespace {

void addCheck(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "check", translated("Check folders, including those that are new, or all locations"));
    const auto options = std::make_shared<CheckOptions>();
    command->add_flag("--wait", options->wait, translated("Wait for another program that is checking"));
    command
        ->add_option("FOLDER", options->folders,
                     translated("Folders to check; all included locations when none is given"))
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runCheck, options));
}

void addInclude(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "include", translated("Include folders, or whole drives by where they are mounted"));
    const auto paths = std::make_shared<std::vector<std::string>>();
    command->add_option("PATH", *paths, translated("Folders or drives"))
        ->required()
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runInclude, paths));
}

void addRemove(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("remove", translated("Stop tracking a location; its history stays"));
    const auto path = std::make_shared<std::string>();
    command->add_option("PATH", *path, translated("The location's path"))
        ->required()
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runRemove, path));
}

void addForget(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("forget", translated("Forget a location that was never checked"));
    const auto path = std::make_shared<std::string>();
    command->add_option("PATH", *path, translated("The location's path"))
        ->required()
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runForget, path));
}

void addWatch(CLI::App& app, Command& chosen) {
    app.add_subcommand("watch", translated("Check all locations on the interval of the settings"))
        ->callback([&chosen] { chosen = runWatch; });
}

void addEstimates(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "estimates", translated("Switch estimates of earlier history, from file dates, on or off"));
    const auto wanted = std::make_shared<std::string>();
    command->add_option("SWITCH", *wanted, translated("on or off; without it, says which"))
        ->check(oneOf({"on", "off"}))
        ->type_name("");
    const auto run = [](const Context& context, const std::string& word) {
        return runEstimates(context, word.empty() ? std::nullopt : std::optional(word == "on"));
    };
    command->callback(choosing(chosen, run, wanted));
}

}  // namespace

void addTrackingCommands(CLI::App& app, Command& chosen) {
    addCheck(app, chosen);
    addWatch(app, chosen);
    addInclude(app, chosen);
    addRemove(app, chosen);
    addForget(app, chosen);
    addEstimates(app, chosen);
}

}  // namespace brindle
