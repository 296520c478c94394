#include "checks/Health.h"

#include "checks/Failures.h"
#include "checks/RunLock.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Capacity.h"
#include "platform/Paths.h"
#include "scan/LocationAccess.h"
#include "store/HistoryFiles.h"

#include <algorithm>
#include <filesystem>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr double secondsADay = 86'400;
constexpr double longWithoutACheck = 7 * secondsADay;

HealthPoint lockPoint(const std::string& directory) {
    HealthPoint point{.name = "lock", .finding = translated("No other program uses the history.")};
    const auto user = HistoryFiles(directory).user();
    if (const auto checking = otherProgramText(directory))
        point.finding = *checking;
    else if (user.value_or(0) > 0)
        point.finding = filled(translated("Another program (process {}) has the history open."), *user);
    else if (user)
        point.finding = translated("Another program has the history open.");
    return point;
}

/// A check rewrites what changed, and a copy of the history is made before a new version changes it.
HealthPoint spacePoint(const std::string& directory, std::int64_t historyBytes) {
    constexpr std::int64_t least = 100'000'000;
    HealthPoint point{.name = "space"};
    const auto reading = readCapacity(directory, "", "", 0);
    if (!reading) {
        point.finding = translated("The room on the history's disk can't be told.");
        return point;
    }
    const std::int64_t room = reading->availableBytes;
    point.finding = filled(translated("The history takes {}; its disk has room for {} more."),
                           byteAmount(historyBytes), byteAmount(room));
    if (room < std::max(least, historyBytes))
        point.advice = filled(translated("Make room on the disk that holds “{}”."), fileNameText(directory));
    return point;
}

bool isOpenToOthers(const fs::path& path) {
    std::error_code none;
    const fs::file_status status = fs::symlink_status(path, none);
    constexpr auto others = fs::perms::group_all | fs::perms::others_all;
    return !none && !fs::is_symlink(status) && (status.permissions() & others) != fs::perms::none;
}

/// The folders, and the files of ours in them.
std::vector<std::string> openToOthers(const HealthQuestion& question) {
    const std::string settings(parentPath(question.settingsFile));
    std::vector<std::string> open;
    for (const std::string& folder : {question.dataDirectory, settings}) {
        if (isOpenToOthers(folder)) open.push_back(folder);
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(folder, none))
            if (entry.is_regular_file(none) && isOpenToOthers(entry.path())) open.push_back(entry.path());
    }
    std::ranges::sort(open);
    open.erase(std::unique(open.begin(), open.end()), open.end());
    return open;
}

HealthPoint privacyPoint(const HealthQuestion& question) {
    HealthPoint point{.name = "privacy"};
    const auto open = openToOthers(question);
    if (open.empty()) {
        point.finding = translated("Only you can read the history and the settings.");
        return point;
    }
    std::string list;
    std::string arguments;
    for (const std::string& path : open) {
        list += (list.empty() ? "“" : ", “") + fileNameText(path) + "”";
        arguments += " '" + fileNameText(path) + "'";
    }
    point.finding = filled(translated("Others may have access to {}."), list);
    point.advice = filled(translated("Take their rights away: chmod go={}"), arguments);
    return point;
}

HealthPoint locationPoint(const LocationRecord& location) {
    HealthPoint point{.name = "location"};
    const std::string name = fileNameText(location.name);
    const std::string path = fileNameText(location.path);
    const AccessState state = resolveAccess(location);
    if (std::holds_alternative<AccessDisconnected>(state)) {
        point.finding = filled(translated("“{}” isn't there: {}."), name, path);
        point.advice = filled(translated("Connect its drive, or stop tracking it: brindle remove {}. Until "
                                         "then it keeps its history."),
                              path);
    } else if (std::holds_alternative<AccessNeeded>(state)) {
        point.finding = filled(translated("“{}” can't be read: {}."), name, path);
        point.advice = translated("Let your account read the folder.");
    } else {
        point.finding = filled(translated("“{}” can be checked: {}."), name, path);
    }
    return point;
}

std::string automaticText(const AutomaticChecks& automatic) {
    if (automatic.isPaused) return translated("Automatic checks are paused.");
    if (automatic.isServiceEnabled) return translated("systemd checks by itself.");
    if (automatic.isWindowOpen) return translated("Brindle's window is open and checks by itself.");
    if (automatic.opensAtLogin) return translated("Brindle opens at login and then checks by itself.");
    return translated("Nothing checks by itself.");
}

HealthPoint schedulePoint(const HealthQuestion& question, const std::vector<LocationRecord>& locations,
                          const Calendar& calendar) {
    HealthPoint point{.name = "schedule"};
    std::optional<UnixTime> last;
    bool isAnyTracked = false;
    for (const LocationRecord& location : locations) {
        if (location.removedAt) continue;
        isAnyTracked = true;
        if (location.lastCheckAt) last = std::max(last.value_or(0), *location.lastCheckAt);
    }
    const std::string how = automaticText(question.automatic);
    if (!isAnyTracked) {
        point.finding = translated("No locations are included yet.") + std::string(" ") + how;
        return point;
    }
    point.finding = (last ? filled(translated("The last check was on {}."), calendar.timeLabel(*last))
                          : std::string(translated("Nothing was checked yet."))) +
                    " " + how;
    if (!last || question.now - *last > longWithoutACheck)
        point.advice = translated("Check now: brindle check");
    return point;
}

/// Files that a program which was killed left behind, and copies that were set aside.
HealthPoint leftoversPoint(const std::string& directory) {
    HealthPoint point{.name = "leftovers", .finding = translated("Nothing was left behind.")};
    std::vector<std::string> partial;
    std::vector<std::string> copies;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(directory, none)) {
        const std::string name = entry.path().filename();
        if (name.find(".partial") != std::string::npos)
            partial.push_back(name);
        else if (name.starts_with("History-"))
            copies.push_back(name);
    }
    const auto listOf = [](std::vector<std::string>& names) {
        std::ranges::sort(names);
        std::string list;
        for (const std::string& name : names) list += (list.empty() ? "" : ", ") + fileNameText(name);
        return list;
    };
    if (!copies.empty())
        point.finding = filled(translated("Kept copies of the history: {}."), listOf(copies));
    if (!partial.empty()) {
        point.finding = filled(translated("A program that was stopped left unfinished files behind: {}."),
                               listOf(partial));
        point.advice = filled(translated("Delete them in “{}”, once no other Brindle is at work."),
                              fileNameText(directory));
    }
    return point;
}

}  // namespace

HealthPoint databasePoint(const HistoryExamination& examination, const std::string& directory) {
    HealthPoint point{.name = "database"};
    const std::string where = fileNameText(directory);
    switch (examination.condition) {
        case HistoryCondition::absent:
            point.finding =
                filled(translated("There is no history in “{}” yet. The first check begins one."), where);
            break;
        case HistoryCondition::whole:
            point.finding =
                filled(translated("The history in “{}” is whole, and its sums are right."), where);
            break;
        case HistoryCondition::outdated:
            point.finding = filled(translated("The history in “{}” is whole, and of an older version. The "
                                              "next command brings it up to date."),
                                   where);
            break;
        case HistoryCondition::newer:
            point.finding =
                filled(translated("The history in “{}” was saved by a newer version of Brindle."), where);
            point.advice = translated("Install the newest version of Brindle.");
            break;
        case HistoryCondition::foreign:
            point.finding =
                filled(translated("History.sqlite in “{}” is the database of another program."), where);
            point.advice = translated("Move that file away, or name another folder: --data-dir DIR");
            break;
        case HistoryCondition::leftOpen:
            point.finding = filled(
                translated(
                    "A program that had the history in “{}” open was killed, and its log has no index."),
                where);
            point.advice = translated("Let Brindle put it in order: brindle status");
            break;
        case HistoryCondition::damaged:
            point.finding = filled(translated("The history in “{}” is damaged: {}"), where,
                                   examination.faults.empty() ? "" : examination.faults.front());
            point.advice = translated("Recover what can be read: brindle doctor --recover");
            break;
    }
    return point;
}

std::vector<HealthPoint> examineHealth(const HealthQuestion& question, const Calendar& calendar) {
    const std::string& directory = question.dataDirectory;
    HistoryExamination examination;
    std::vector<HealthPoint> points;
    try {
        examination = examineHistory(HistoryFiles(directory));
        points.push_back(databasePoint(examination, directory));
        if (fs::exists(directory)) points.push_back(lockPoint(directory));
    } catch (const std::exception& error) {
        points.assign({{.name = "database",
                        .finding = failureSentence(error, directory),
                        .advice = translated("Let your account read the folder and the files in it.")}});
    }
    std::error_code none;
    if (fs::exists(directory, none)) {
        points.push_back(spacePoint(directory, examination.bytes));
        points.push_back(privacyPoint(question));
    }
    if (examination.condition == HistoryCondition::whole) {
        for (const LocationRecord& location : examination.locations)
            if (!location.removedAt) points.push_back(locationPoint(location));
        points.push_back(schedulePoint(question, examination.locations, calendar));
    }
    points.push_back(leftoversPoint(directory));
    return points;
}

}  // namespace brindle
