#include "cli/DrivesCommand.h"

#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Capacity.h"
#include "scan/Drives.h"

#include <algorithm>
#include <fmt/format.h>

namespace brindle {
namespace {

void print(Output& output, const DriveInfo& drive, const std::optional<VolumeReading>& reading,
           bool isIncluded) {
    output.line(
        fmt::format("{}  {}", output.emphasized(fileNameText(drive.name)), fileNameText(drive.mountPath)));
    std::string text = drive.isInternal ? translated("internal") : translated("external");
    if (reading)
        text += fmt::format(fmt::runtime(translated(", {} available of {}")),
                            byteAmount(reading->availableBytes), byteAmount(reading->totalBytes));
    if (reading && reading->snapshotCount.value_or(0) > 0)
        text += fmt::format(fmt::runtime(translatedCount(", {} local snapshot", ", {} local snapshots",
                                                         *reading->snapshotCount)),
                            groupedNumber(*reading->snapshotCount));
    if (isIncluded) text += translated(", included");
    output.line("  " + text);
}

}  // namespace

ExitCode runDrives(const Context& context) {
    HistoryStore store = context.openHistory();
    const auto records = store.loadLocations().get();
    const auto drives = mountedDrives({});
    auto listed = nlohmann::ordered_json::array();
    for (const DriveInfo& drive : drives) {
        const bool isIncluded = std::ranges::any_of(records, [&drive](const LocationRecord& record) {
            return record.kind == LocationKind::volume && !record.removedAt &&
                   record.volumeID == drive.volumeID;
        });
        const auto reading = readCapacity(drive.mountPath, drive.volumeID, drive.name, systemNow());
        if (!context.asJson) print(context.output, drive, reading, isIncluded);
        nlohmann::ordered_json json = {{"id", drive.id},
                                       {"name", drive.name},
                                       {"mountPath", drive.mountPath},
                                       {"isInternal", drive.isInternal},
                                       {"isStartup", drive.isStartup},
                                       {"isIncluded", isIncluded}};
        if (reading) json["capacity"] = *reading;
        listed.push_back(std::move(json));
    }
    if (context.asJson) context.output.json(listed);
    return drives.empty() ? ExitCode::nothingFound : ExitCode::success;
}

}  // namespace brindle
