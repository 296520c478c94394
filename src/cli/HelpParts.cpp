#include "cli/HelpParts.h"

#include "model/Translation.h"

#include <CLI/CLI.hpp>

namespace brindle {
namespace {

void nameOptions(CLI::App& app) {
    for (CLI::Option* option : app.get_options()) option->group(translated("Options"));
}

}  // namespace

void nameHelpParts(CLI::App& app) {
    const auto formatter = app.get_formatter();
    formatter->label("Usage", translated("Usage"));
    formatter->label("OPTIONS", translated("OPTIONS"));
    formatter->label("SUBCOMMAND", translated("SUBCOMMAND"));
    formatter->label("Positionals", translated("Positionals"));
    nameOptions(app);
    for (CLI::App* command : app.get_subcommands({})) {
        command->group(translated("Subcommands"));
        nameOptions(*command);
    }
}

}  // namespace brindle
