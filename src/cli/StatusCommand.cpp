#include "cli/StatusCommand.h"

#include "checks/RunLock.h"
#include "cli/ChangeTable.h"
#include "cli/ValueCoding.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <fmt/format.h>

namespace brindle {
namespace {

/// What keeps the location from being checked; null when nothing was known to.
const char* obstacleText(LocationStatus status) {
    if (status == LocationStatus::disconnected) return translated("not connected");
    if (status == LocationStatus::needsAccess) return translated("needs access");
    return nullptr;
}

std::string conditionText(const TrackedLocation& location, const Calendar& calendar) {
    std::string text = location.lastCheck
                           ? filled(translated("{}, checked {}"), byteAmount(location.trackedBytes),
                                    calendar.timeLabel(*location.lastCheck))
                           : translated("Never checked yet");
    if (const char* obstacle = obstacleText(location.status)) text += fmt::format(", {}", obstacle);
    return text;
}

std::string todayText(const DayState& today, const Output& output) {
    const auto* recorded = std::get_if<DayRecorded>(&today);
    if (recorded == nullptr) return translated("Today: not checked");
    std::string text = recorded->totals.count == 0
                           ? translated("Today: no changes")
                           : filled(translated("Today: {}"), totalsText(recorded->totals, output));
    // Of one location, a day is partial for no other reason.
    if (recorded->partial) text += translated(" (some folders couldn't be read)");
    return text;
}

void printLocation(const Context& context, const TrackedLocation& location, const DayState& today) {
    context.output.heading(location.name, location.path);
    context.output.paragraph(conditionText(location, context.calendar), 2);
    if (location.lastCheck) context.output.line("  " + todayText(today, context.output));
}

void printDrive(const Context& context, const VolumeReading& drive) {
    context.output.heading(drive.name, drive.mountPath);
    context.output.paragraph(
        filled(translated("{0} free of {1} at the check of {2}"), byteAmount(drive.availableBytes),
               byteAmount(drive.totalBytes), context.calendar.timeLabel(drive.readAt)),
        2);
}

nlohmann::ordered_json coded(const TrackedLocation& location, const DayState& today) {
    nlohmann::ordered_json lastCheck;
    if (location.lastCheck) lastCheck = *location.lastCheck;
    return {{"id", location.id},
            {"name", location.name},
            {"path", location.path},
            {"status", rawText(location.status)},
            {"lastCheckAt", lastCheck},
            {"trackedBytes", location.trackedBytes},
            {"today", today}};
}

nlohmann::ordered_json coded(const VolumeReading& drive) {
    nlohmann::ordered_json json = {
        {"id", drive.id}, {"name", drive.name}, {"mountPath", drive.mountPath}, {"capacity", drive}};
    return json;
}

}  // namespace

ExitCode runStatus(const Context& context) {
    constexpr int days = 1;  // of a long history it would read far more than it shows
    const HistorySnapshot snapshot = context.openSource(days)->snapshot().get();
    const auto otherProgram = context.isExample ? std::nullopt : otherProgramText(context.dataDirectory);
    const auto tracked = snapshot.currentlyTracked();

    auto locations = nlohmann::ordered_json::array();
    for (const TrackedLocation& location : tracked) {
        const DayState today = dayState(snapshot, snapshot.today, {location.id});
        locations.push_back(coded(location, today));
        if (!context.asJson) printLocation(context, location, today);
    }
    auto drives = nlohmann::ordered_json::array();
    for (const VolumeReading& drive : snapshot.volumes) {
        if (std::ranges::find(tracked, drive.id, &TrackedLocation::volumeID) == tracked.end()) continue;
        if (!context.asJson && drives.empty()) context.output.line();
        drives.push_back(coded(drive));
        if (!context.asJson) printDrive(context, drive);
    }
    if (context.asJson)
        context.output.json({{"today", snapshot.today},
                             {"locations", locations},
                             {"drives", drives},
                             {"otherProgramIsChecking", otherProgram.has_value()}});
    else if (tracked.empty())
        context.output.sentence(
            translated("No locations included yet. To begin, name a folder whose changes you want to see: "
                       "brindle check FOLDER."));
    if (otherProgram && !context.asJson) context.output.sentence(*otherProgram);
    return tracked.empty() ? ExitCode::nothingFound : ExitCode::success;
}

}  // namespace brindle
