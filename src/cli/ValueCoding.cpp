#include "cli/ValueCoding.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace brindle {
namespace {

template <class Value>
nlohmann::ordered_json orNull(const std::optional<Value>& value) {
    return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
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

void to_json(nlohmann::ordered_json& json, const FileChange& change) {
    json = {{"id", change.id},
            {"location", change.locationID},
            {"folder", fmt::format("{}", fmt::join(change.folder, "/"))},
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
