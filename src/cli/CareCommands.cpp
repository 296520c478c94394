#include "cli/BackupCommand.h"
#include "cli/Commands.h"
#include "cli/DoctorCommand.h"
#include "model/Translation.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace brindle {
namespace {

void addDoctor(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "doctor", translated("Look whether the history is well, and say what is to be done"));
    const auto options = std::make_shared<DoctorOptions>();
    command->add_flag("--recover", options->recovers,
                      translated("Bring what can be read of a damaged history into a new one"));
    command->callback(choosing(chosen, runDoctor, options));
}

void addBackup(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("backup", translated("Write a copy of the history to a file"));
    const auto options = std::make_shared<BackupOptions>();
    command->add_flag("--force", options->replaces, translated("Replace the file if it is there"));
    command->add_option("FILE", options->file, translated("The file"))->required()->check(emptyPathObjection);
    command->callback(choosing(chosen, runBackup, options));
}

void addRestore(CLI::App& app, Command& chosen) {
    auto* command =
        app.add_subcommand("restore", translated("Put a backup in the history's place; the old one is kept"));
    const auto options = std::make_shared<RestoreOptions>();
    command->add_flag("--yes", options->isConfirmed, translated("Don't ask"));
    command->add_option("FILE", options->file, translated("The backup"))
        ->required()
        ->check(emptyPathObjection);
    command->callback(choosing(chosen, runRestore, options));
}

}  // namespace

void addCareCommands(CLI::App& app, Command& chosen) {
    addDoctor(app, chosen);
    addBackup(app, chosen);
    addRestore(app, chosen);
}

}  // namespace brindle
