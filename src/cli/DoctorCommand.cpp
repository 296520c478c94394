#include "cli/DoctorCommand.h"

#include "checks/Health.h"
#include "cli/SoleUse.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Paths.h"
#include "settings/WindowLock.h"
#include "store/Recovery.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <nlohmann/json.hpp>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// Whether the session starts the window: there is an entry of ours that nobody has switched off.
bool opensAtLogin() {
    std::ifstream entry(joinedPath(configHome(), "autostart/org.brindle.brindle.desktop"));
    if (!entry) return false;
    for (std::string line; std::getline(entry, line);)
        if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false") return false;
    return true;
}

bool isServiceEnabled() {
    std::error_code none;
    for (const char* link :
         {"default.target.wants/brindle-watch.service", "timers.target.wants/brindle-check.timer"})
        if (fs::exists(
                fs::symlink_status(joinedPath(configHome(), std::string("systemd/user/") + link), none)))
            return true;
    return false;
}

AutomaticChecks automaticChecks(const Context& context) {
    std::error_code none;
    return {.isWindowOpen = fs::exists(context.dataDirectory, none) && isWindowRunning(context.dataDirectory),
            .opensAtLogin = opensAtLogin(),
            .isServiceEnabled = isServiceEnabled(),
            .isPaused = context.preferences().checksPaused};
}

ExitCode examine(const Context& context) {
    const auto points = examineHealth({.dataDirectory = context.dataDirectory,
                                       .settingsFile = SettingsFile::ofUser().path(),
                                       .automatic = automaticChecks(context),
                                       .now = systemNow()},
                                      context.calendar);
    bool isHealthy = true;
    auto listed = nlohmann::ordered_json::array();
    for (const HealthPoint& point : points) {
        isHealthy = isHealthy && point.isWell();
        listed.push_back(
            {{"point", point.name},
             {"isWell", point.isWell()},
             {"finding", point.finding},
             {"advice", point.isWell() ? nlohmann::ordered_json() : nlohmann::ordered_json(point.advice)}});
        if (context.asJson) continue;
        context.output.paragraph((point.isWell() ? "✓ " : "! ") + point.finding);
        if (!point.isWell()) context.output.paragraph(point.advice, 2);
    }
    if (context.asJson)
        context.output.json(
            {{"directory", context.dataDirectory}, {"isHealthy", isHealthy}, {"points", listed}});
    return isHealthy ? ExitCode::success : ExitCode::attentionNeeded;
}

const char* contentsOf(const std::string& table) {
    if (table == "locations") return translated("Locations");
    if (table == "scan_runs") return translated("Checks");
    if (table == "observations") return translated("Changes");
    if (table == "estimates") return translated("Estimates");
    if (table == "capacity_samples") return translated("Readings of drives");
    if (table == "exported_files") return translated("Exported statements");
    if (table == "tracked_totals") return translated("Sizes of days");
    if (table == "unreadable_folders") return translated("Folders that couldn't be read");
    return translated("Files of the last checks");
}

std::string tableText(const RecoveredTable& table) {
    std::string text = fmt::format("{}: {}", contentsOf(table.name), groupedNumber(table.rows));
    const auto refused = static_cast<std::int64_t>(table.refusedRows);
    const auto pages = static_cast<std::int64_t>(table.damagedPages);
    if (refused > 0)
        text += filled(translatedCount(", {} damaged and lost", ", {} damaged and lost", refused),
                       groupedNumber(refused));
    if (pages > 0)
        text += filled(translatedCount(", and what {} damaged page held beyond them",
                                       ", and what {} damaged pages held beyond them", pages),
                       groupedNumber(pages));
    return text + ".";
}

void report(const Context& context, const RecoveryReport& recovered) {
    if (context.asJson) {
        auto tables = nlohmann::ordered_json::array();
        for (const RecoveredTable& table : recovered.tables)
            tables.push_back({{"table", table.name},
                              {"rows", table.rows},
                              {"damagedRows", table.refusedRows},
                              {"damagedPages", table.damagedPages}});
        context.output.json({{"recovered", true},
                             {"setAside", recovered.setAside.string()},
                             {"tables", tables},
                             {"incompleteLocations", recovered.incompleteLocations}});
        return;
    }
    context.output.line(translated("The history was recovered. These came over:"));
    for (const RecoveredTable& table : recovered.tables) context.output.paragraph(tableText(table), 2);
    if (!recovered.tables.front().isWhole())
        context.output.paragraph(
            translated("A location that is missing now can be included again: brindle include PATH"));
    for (const std::string& name : recovered.incompleteLocations)
        context.output.paragraph(
            filled(translated("The files of “{}” aren't all known any more. Its next check finds them again, "
                              "and doesn't record them as added."),
                   fileNameText(name)));
    context.output.paragraph(
        filled(translated("The damaged file is kept as {}"), fileNameText(recovered.setAside.string())));
}

/// What the history is once the log of a program that was killed is in order, which opening it sees to.
HistoryCondition conditionInOrder(const Context& context, const HistoryFiles& files) {
    const HistoryCondition condition = examineHistory(files).condition;
    if (condition != HistoryCondition::leftOpen) return condition;
    try {
        static_cast<void>(context.openHistory());
        return examineHistory(files).condition;
    } catch (const SQLiteError& error) {
        if (!error.isDamage()) throw;
        return HistoryCondition::damaged;
    }
}

ExitCode recover(const Context& context) {
    const HistoryCondition condition = conditionInOrder(context, HistoryFiles(context.dataDirectory));
    if (condition == HistoryCondition::newer || condition == HistoryCondition::foreign) {
        const HealthPoint point = databasePoint({.condition = condition}, context.dataDirectory);
        context.output.sentence(point.finding + " " + point.advice);
        return ExitCode::historyFailed;
    }
    if (condition == HistoryCondition::damaged) {
        const SoleUse alone(context.dataDirectory);
        report(context, recoverHistory(context.dataDirectory, systemNow));
    } else if (context.asJson) {
        context.output.json({{"recovered", false}});
    } else {
        context.output.line(translated("There is nothing to recover: the history is not damaged."));
    }
    return ExitCode::success;
}

}  // namespace

ExitCode runDoctor(const Context& context, const DoctorOptions& options) {
    return options.recovers ? recover(context) : examine(context);
}

}  // namespace brindle
