#include "checks/Failures.h"
#include "checks/RunLock.h"
#include "cli/ChangesCommand.h"
#include "cli/CheckCommand.h"
#include "cli/DayCommand.h"
#include "cli/DrivesCommand.h"
#include "cli/EstimatesCommand.h"
#include "cli/IncludeCommand.h"
#include "cli/LocationsCommand.h"
#include "cli/RemoveCommand.h"
#include "cli/StatusCommand.h"
#include "cli/WatchCommand.h"
#include "model/FileNameText.h"
#include "model/Translation.h"
#include "platform/Paths.h"
#include "scan/LocationAccess.h"
#include "settings/LaunchOptions.h"
#include "settings/SettingsFile.h"

#include <CLI/CLI.hpp>
#include <clocale>
#include <functional>

namespace brindle {
namespace {

constexpr const char* description =
    "Brindle keeps a private, local history of where your disk space goes.\n"
    "It records the sizes, dates and paths of files, and never reads what is in them.";

constexpr const char* footer =
    "Examples:\n"
    "  brindle check ~/Pictures         include a folder and set its starting point\n"
    "  brindle check                    check every included location\n"
    "  brindle include /media/ann/Disk  include a drive by where it is mounted\n"
    "  brindle changes --since 2026-03-01 ~/Pictures\n"
    "\n"
    "Exit status: 0 done; 1 nothing found; 2 wrong usage; 3 the history can't be used;\n"
    "4 a location couldn't be checked; 5 another program is checking; 130 stopped by a signal.";

/// An empty path is the value of a variable that was not set, and never the working folder.
const CLI::Validator isNoEmptyPath(
    [](const std::string& path) { return path.empty() ? std::string(translated("A path is empty.")) : ""; },
    "");

/// Where the history is unless the command line says otherwise.
std::string usualDataDirectory(Output& output) {
    const StoredSettings stored = SettingsFile::ofUser().read();
    if (stored.note) output.sentence(*stored.note);
    return readLaunchOptions(SettingValues(stored.values)).dataDirectory;
}

int runCommand(const std::function<ExitCode()>& command, Output& output, const std::string& dataDirectory) {
    const auto fail = [&output](ExitCode code, const std::string& sentence) {
        output.sentence(sentence);
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
    } catch (const Cancelled& error) {
        return fail(ExitCode::interrupted, error.what());
    } catch (const std::exception& error) {
        return fail(ExitCode::historyFailed, failureSentence(error, dataDirectory));
    }
}

int run(int argc, char** argv) {
    CLI::App app(description, "brindle");
    app.footer(footer);
    app.set_version_flag("--version", "brindle " BRINDLE_VERSION);
    app.require_subcommand(1);
    app.fallthrough();

    Output output;
    std::string dataDirectory;
    bool asJson = false;
    app.add_option("--data-dir", dataDirectory, "Where the history is kept (default: ~/.local/share/Brindle)")
        ->check(isNoEmptyPath)
        ->type_name("DIR");
    app.add_flag("--json", asJson, "Print the result as JSON");

    std::function<ExitCode()> command;
    const auto context = [&] {
        return Context{.dataDirectory = dataDirectory, .asJson = asJson, .output = output};
    };

    auto* check =
        app.add_subcommand("check", "Check folders, including those that are new, or all locations");
    CheckOptions checkOptions;
    check->add_flag("--wait", checkOptions.wait, "Wait for another program that is checking");
    check
        ->add_option("FOLDER", checkOptions.folders,
                     "Folders to check; all included locations when none is given")
        ->check(isNoEmptyPath);
    check->callback([&] { command = [&] { return runCheck(context(), checkOptions); }; });

    std::vector<std::string> paths;
    auto* include =
        app.add_subcommand("include", "Include folders, or whole drives by where they are mounted");
    include->add_option("PATH", paths, "Folders or drives")->required()->check(isNoEmptyPath);
    include->callback([&] { command = [&] { return runInclude(context(), paths); }; });

    std::string path;
    auto* remove = app.add_subcommand("remove", "Stop tracking a location; its history stays");
    remove->add_option("PATH", path, "The location's path")->required()->check(isNoEmptyPath);
    remove->callback([&] { command = [&] { return runRemove(context(), path); }; });

    auto* forget = app.add_subcommand("forget", "Forget a location that was never checked");
    forget->add_option("PATH", path, "The location's path")->required()->check(isNoEmptyPath);
    forget->callback([&] { command = [&] { return runForget(context(), path); }; });

    auto* locations = app.add_subcommand("locations", "List the included locations");
    locations->callback([&] { command = [&] { return runLocations(context()); }; });

    auto* drives = app.add_subcommand("drives", "List the mounted drives and how full they are");
    drives->callback([&] { command = [&] { return runDrives(context()); }; });

    auto* status = app.add_subcommand("status", "Show every location, today's changes and the drives");
    status->callback([&] { command = [&] { return runStatus(context()); }; });

    auto* dayCommand = app.add_subcommand("day", "Show what is known of a day");
    std::string dayShown = "today";
    dayCommand->add_option("DAY", dayShown, "The day: 2026-03-07, today, yesterday (default: today)")
        ->type_name("");
    dayCommand->callback([&] { command = [&] { return runDay(context(), dayShown); }; });

    auto* watch = app.add_subcommand("watch", "Check all locations on the interval of the settings");
    watch->callback([&] { command = [&] { return runWatch(context()); }; });

    auto* estimates =
        app.add_subcommand("estimates", "Switch estimates of earlier history, from file dates, on or off");
    std::string wanted;
    estimates->add_option("SWITCH", wanted, "on or off; without it, says which")
        ->check(CLI::IsMember({"on", "off"}))
        ->type_name("");
    estimates->callback([&] {
        command = [&] {
            return runEstimates(context(), wanted.empty() ? std::nullopt : std::optional(wanted == "on"));
        };
    });

    auto* changes = app.add_subcommand("changes", "Show what changed on a day, or since a day");
    ChangesOptions options;
    auto* day =
        changes->add_option("--day", options.day, "The day: 2026-03-07, today, yesterday (default: today)")
            ->type_name("DAY");
    changes->add_option("--since", options.since, "Every day from this one through today")
        ->type_name("DAY")
        ->excludes(day);
    changes->add_option("--limit", options.limit, "How many changes to list, largest first; 0 for all")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str()
        ->type_name("N");
    changes->add_option("FOLDER", options.folder, "Only what lies in this folder")->check(isNoEmptyPath);
    changes->callback([&] { command = [&] { return runChanges(context(), options); }; });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);  // --help, --version
        // It repeats what was typed, which a shell may have made of the name of a file.
        output.sentence(fileNameText(error.what()));
        output.sentence(translated("Run with --help for more information."));
        return static_cast<int>(ExitCode::wrongUsage);
    }
    return runCommand(
        [&] {
            dataDirectory =
                dataDirectory.empty() ? usualDataDirectory(output) : standardizedPath(dataDirectory);
            return command();
        },
        output, dataDirectory);
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    return brindle::run(argc, argv);
}
