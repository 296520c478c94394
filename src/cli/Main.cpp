#include "checks/Failures.h"
#include "checks/RunLock.h"
#include "cli/CommandHelp.h"
#include "cli/Commands.h"
#include "cli/Completions.h"
#include "cli/HelpParts.h"
#include "cli/UsageSentence.h"
#include "model/Catalogues.h"
#include "model/Translatable.h"
#include "model/Translation.h"
#include "platform/BecomeProgram.h"
#include "platform/Display.h"
#include "platform/Paths.h"
#include "scan/LocationAccess.h"
#include "settings/LaunchOptions.h"
#include "settings/ProgramInformation.h"
#include "settings/SettingsFile.h"

#include <CLI/CLI.hpp>
#include <clocale>
#include <functional>
#include <vector>

namespace brindle {
namespace {

constexpr const char* description = translatable(
    "Brindle keeps a private, local history of where your disk space goes.\n"
    "It records the sizes, dates and paths of files, and never reads what is in them.");

constexpr const char* footer = translatable(
    "Examples:\n"
    "  brindle check ~/Pictures         include a folder and set its starting point\n"
    "  brindle check                    check every included location\n"
    "  brindle include /media/ann/Disk  include a drive by where it is mounted\n"
    "  brindle changes --since 2026-03-01 ~/Pictures\n"
    "\n"
    "Exit status: 0 done; 1 nothing found, or a limit passed; 2 wrong usage; 3 the history or a file\n"
    "can't be used; 4 a location couldn't be checked; 5 another program is checking; 6 brindle doctor\n"
    "found something to be done; 130 stopped by a signal.");

/// Where the history is unless the command line says otherwise.
std::string usualDataDirectory(Output& output) {
    const StoredSettings stored = SettingsFile::ofUser().read();
    if (stored.note) output.sentence(*stored.note);
    return readLaunchOptions(SettingValues(stored.values)).dataDirectory;
}

int runCommand(const std::function<ExitCode()>& command, Output& output, const std::string& dataDirectory) {
    const auto fail = [&output](ExitCode code, const std::string& sentence) {
        output.failure(sentence);
        return static_cast<int>(code);
    };
    try {
        const ExitCode code = command();
        if (!output.flush())
            return fail(ExitCode::historyFailed, translated("The result couldn't be written."));
        return static_cast<int>(code);
    } catch (const UsageError& error) {
        return fail(ExitCode::wrongUsage, error.what());
    } catch (const LocationChoiceError& error) {
        return fail(ExitCode::wrongUsage, error.what());
    } catch (const RunLocked& error) {
        return fail(ExitCode::locked, error.what());
    } catch (const Cancelled&) {
        return fail(ExitCode::interrupted, translated("Stopped."));
    } catch (const std::exception& error) {
        return fail(ExitCode::historyFailed, failureSentence(error, dataDirectory));
    }
}

int run(int argc, char** argv) {
    CLI::App app(translated(description), "brindle");
    app.footer(translated(footer));
    app.set_help_flag("-h,--help", translated("Print this help message and exit"));
    app.set_version_flag("--version", "brindle " BRINDLE_VERSION,
                         translated("Display program version information and exit"));
    shapeHelp(app);
    app.require_subcommand(0, 1);
    app.fallthrough();

    Output output;
    std::string dataDirectory;
    bool asJson = false;
    app.add_option("--data-dir", dataDirectory,
                   translated("Where the history is kept (default: ~/.local/share/Brindle)"))
        ->check(emptyPathObjection)
        ->type_name("DIR");
    app.add_flag("--json", asJson, translated("Print the result as JSON"));
    bool isExample = false;
    app.add_flag("--example", isExample, translated("Show an example history instead of yours"));

    Command tracking;
    Command reading;
    addTrackingCommands(app, tracking);
    addReadingCommands(app, reading);
    addCareCommands(app, tracking);
    nameHelpParts(app);
    giveExamples(app);
    addCompletionOption(app);

    std::vector<const char*> arguments(argv, argv + argc);
    if (argc == 1) {
        if (hasDisplay()) becomeProgram("brindle-desktop");
        arguments.push_back("status");
    }
    try {
        app.parse(static_cast<int>(arguments.size()), arguments.data());
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);  // --help, --version
        output.sentence(usageSentence(app, error));
        output.sentence(translated("Run with --help for more information."));
        return static_cast<int>(ExitCode::wrongUsage);
    }
    return runCommand(
        [&] {
            if (!tracking && !reading)
                throw UsageError(translated("Which command? Run with --help for a list of them."));
            if (isExample) {
                if (tracking)
                    throw UsageError(
                        translated("There is nothing to check or to change in the example history."));
                output.tellOfExample();
                return reading({.asJson = asJson, .isExample = true, .output = output});
            }
            dataDirectory =
                dataDirectory.empty() ? usualDataDirectory(output) : standardizedPath(dataDirectory);
            const Command& command = tracking ? tracking : reading;
            return command({.dataDirectory = dataDirectory, .asJson = asJson, .output = output});
        },
        output, dataDirectory);
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    brindle::useCatalogues(brindle::cataloguesFolder(brindle::programFile()));
    return brindle::run(argc, argv);
}
