#include "cli/DrivesCommand.h"

#include "cli/ValueCoding.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Capacity.h"
#include "scan/Drives.h"

#include <algorithm>

namespace brindle {
namespace {

struct ListedDrive {
    DriveInfo drive;
    std::optional<VolumeReading> reading;
    bool isIncluded = false;  // as a whole
};

std::vector<ListedDrive> drivesOfThisComputer(HistoryStore& store) {
    const auto records = store.loadLocations().get();
    std::vector<ListedDrive> listed;
    for (const DriveInfo& drive : mountedDrives({})) {
        const bool isIncluded = std::ranges::any_of(records, [&drive](const LocationRecord& record) {
            return record.kind == LocationKind::volume && !record.removedAt &&
                   record.volumeID == drive.volumeID;
        });
        listed.push_back(
            {drive, readCapacity(drive.mountPath, drive.volumeID, drive.name, systemNow()), isIncluded});
    }
    return listed;
}

std::vector<ListedDrive> drivesOfTheExample(HistorySource& source) {
    const HistorySnapshot snapshot = source.snapshot().get();
    std::vector<ListedDrive> listed;
    for (const VolumeReading& volume : snapshot.volumes)
        listed.push_back({{.id = volume.id,
                           .name = volume.name,
                           .mountPath = volume.mountPath,
                           .isInternal = volume.isInternal,
                           .isStartup = volume.mountPath == "/"},
                          volume,
                          std::ranges::any_of(snapshot.locations, [&volume](const TrackedLocation& location) {
                              return location.kind == LocationKind::volume && location.volumeID == volume.id;
                          })});
    return listed;
}

void print(Output& output, const ListedDrive& listed) {
    const auto& [drive, reading, isIncluded] = listed;
    output.heading(drive.name, drive.mountPath);
    std::string text = drive.isInternal ? translated("internal") : translated("external");
    if (reading)
        text += filled(translated(", {} available of {}"), byteAmount(reading->availableBytes),
                       byteAmount(reading->totalBytes));
    if (reading && reading->snapshotCount.value_or(0) > 0)
        text +=
            filled(translatedCount(", {} local snapshot", ", {} local snapshots", *reading->snapshotCount),
                   groupedNumber(*reading->snapshotCount));
    if (isIncluded) text += translated(", included");
    output.paragraph(text, 2);
}

}  // namespace

ExitCode runDrives(const Context& context) {
    std::vector<ListedDrive> drives;
    if (context.isExample) {
        drives = drivesOfTheExample(*context.openSource());
    } else {
        HistoryStore store = context.openHistory();
        drives = drivesOfThisComputer(store);
    }
    auto listed = nlohmann::ordered_json::array();
    for (const ListedDrive& one : drives) {
        if (!context.asJson) print(context.output, one);
        nlohmann::ordered_json json = {{"id", one.drive.id},
                                       {"name", one.drive.name},
                                       {"mountPath", one.drive.mountPath},
                                       {"isInternal", one.drive.isInternal},
                                       {"isStartup", one.drive.isStartup},
                                       {"isIncluded", one.isIncluded}};
        if (one.reading) json["capacity"] = *one.reading;
        listed.push_back(std::move(json));
    }
    if (context.asJson) context.output.json(listed);
    return drives.empty() ? ExitCode::nothingFound : ExitCode::success;
}

}  // namespace brindle
