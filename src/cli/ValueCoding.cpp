#include "cli/ValueCoding.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace brindle {
namespace {

std::string folderText(const FolderPath& components) {
    return fmt::format("{}", fmt::join(components, "/"));
}

}  // namespace

void to_json(nlohmann::ordered_json& json, const LocationID& id) {
    json = id.rawValue;
}

void to_json(nlohmann::ordered_json& json, const LocalDay& day) {
    json = {{"year", day.year}, {"month", day.month}, {"day", day.day}};
}

void to_json(nlohmann::ordered_json& json, const ChangeTotals& totals) {
    json = {{"added", totals.added}, {"freed", totals.freed}, {"count", totals.count}};
}

void to_json(nlohmann::ordered_json& json, const EstimateTotals& totals) {
    json = {{"bytes", totals.bytes}, {"files", totals.files}};
}

void to_json(nlohmann::ordered_json& json, const DayState& state) {
    if (const auto* recorded = std::get_if<DayRecorded>(&state))
        json = {{"state", "recorded"}, {"isPartial", recorded->partial}, {"totals", recorded->totals}};
    else if (const auto* estimated = std::get_if<DayEstimated>(&state))
        json = {{"state", "estimated"}, {"estimate", estimated->totals}};
    else
        json = {{"state", std::holds_alternative<DayFuture>(state) ? "future" : "noCheck"}};
}

void to_json(nlohmann::ordered_json& json, const FolderRef& ref) {
    json = {{"location", ref.locationID}, {"folder", folderText(ref.components)}};
}

void to_json(nlohmann::ordered_json& json, const FolderSummary& folder) {
    json = {{"location", folder.ref.locationID},
            {"folder", folderText(folder.ref.components)},
            {"totals", folder.totals}};
}

void to_json(nlohmann::ordered_json& json, const FileChange& change) {
    json = {{"id", change.id},
            {"location", change.locationID},
            {"folder", folderText(change.folder)},
            {"name", change.name},
            {"action", rawText(change.action)},
            {"byteDelta", change.byteDelta},
            {"observedAt", change.observedAt},
            {"day", change.day},
            {"source", rawText(change.source)},
            {"fileCount", change.fileCount}};
}

void to_json(nlohmann::ordered_json& json, const LocationRecord& record) {
    json = {{"id", record.id},
            {"name", record.name},
            {"path", record.path},
            {"kind", rawText(record.kind)},
            {"volumeID", record.volumeID},
            {"volumeName", record.volumeName},
            {"status", rawText(record.status)},
            {"trackedBytes", record.trackedBytes},
            {"addedAt", record.addedAt},
            {"baselineAt", orNull(record.baselineAt)},
            {"lastCheckAt", orNull(record.lastCheckAt)},
            {"removedAt", orNull(record.removedAt)}};
}

void to_json(nlohmann::ordered_json& json, const UnreadableFolder& folder) {
    json = {{"path", folder.relativePath}, {"isPermission", folder.isPermission}};
}

void to_json(nlohmann::ordered_json& json, const VolumeReading& reading) {
    json = {{"totalBytes", reading.totalBytes},
            {"freeBytes", reading.freeBytes},
            {"availableBytes", reading.availableBytes},
            {"volumeUsedBytes", orNull(reading.volumeUsedBytes)},
            {"snapshotCount", orNull(reading.snapshotCount)},
            {"readAt", reading.readAt}};
}

}  // namespace brindle
