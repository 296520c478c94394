#include "store/SavedTables.h"

#include "model/Change.h"
#include "model/LocalDay.h"
#include "model/Location.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <string_view>

namespace brindle {

/// What may stand in a column.
enum class SavedTable::Column : std::uint8_t {
    rowID,  // NULL, for the row's number
    location,
    text,
    path,          // absolute
    relativePath,  // of a file
    folder,        // the same, or empty for the location's root
    name,
    groupName,  // the same, or empty
    kind,
    status,
    outcome,
    action,
    source,
    day,
    time,
    optionalTime,
    flag,
    reason,
    amount,  // at least 0
    optionalAmount,
    delta,
    number,  // at least 1
    bookmark,
};

namespace {

using Column = SavedTable::Column;
using enum SavedTable::Column;

constexpr std::array locationColumns{location,     text,   path,     path,        kind,         text,
                                     text,         flag,   bookmark, time,        optionalTime, optionalTime,
                                     optionalTime, amount, status,   optionalTime};
constexpr std::array runColumns{rowID,   location,       time,          time,   day,
                                outcome, flag,           amount,        amount, amount,
                                amount,  optionalAmount, optionalAmount};
constexpr std::array observationColumns{rowID, location, folder, name,   action, delta,
                                        time,  day,      source, folder, number};
constexpr std::array estimateColumns{rowID, location, day, folder, groupName, amount, number, folder, time};
constexpr std::array capacityColumns{text,   text,   path,           flag,           time,          day,
                                     amount, amount, optionalAmount, optionalAmount, optionalAmount};
constexpr std::array exportColumns{path, time};
constexpr std::array trackedColumns{location, day, amount};
constexpr std::array unreadableColumns{location, folder, reason};
constexpr std::array inventoryColumns{location, relativePath, amount};

constexpr SavedTable tables[] = {
    {"locations",
     "rowid, id, name, path, scan_path, kind, volume_id, volume_name, case_sensitive, bookmark, added_at, "
     "removed_at, baseline_at, last_check_at, tracked_bytes, status, estimated_at",
     true, locationColumns},
    {"scan_runs",
     "id, location_id, started_at, finished_at, local_day, outcome, partial, files_seen, tracked_bytes, "
     "unreadable_folders, cloud_only_bytes, allocated_bytes, trash_bytes",
     true, runColumns},
    {"observations",
     "id, location_id, folder, name, action, delta, observed_at, local_day, source, contributor, scan_id",
     true, observationColumns},
    {"estimates", "id, location_id, local_day, folder, name, bytes, file_count, contributor, made_at", true,
     estimateColumns},
    {"capacity_samples",
     "rowid, volume_id, name, mount_path, is_internal, read_at, local_day, total, free, available, "
     "volume_used, snapshots",
     true, capacityColumns},
    {"exported_files", "path, exported_at", false, exportColumns},
    {"tracked_totals", "location_id, local_day, bytes", false, trackedColumns},
    {"unreadable_folders", "location_id, rel_path, reason", false, unreadableColumns},
    {"inventory", "location_id, rel_path, size", false, inventoryColumns},
};

// No file is larger, and a sum of a thousand such still fits.
constexpr std::int64_t largestAmount = std::int64_t{1} << 53;

bool has(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool isDay(std::string_view text) {
    const auto parsed = LocalDay::parse(text);
    return parsed && parsed->month >= 1 && parsed->month <= 12 && parsed->day >= 1 && parsed->day <= 31;
}

bool isRelativePath(std::string_view text) {
    return !text.empty() && !text.starts_with('/') && !text.ends_with('/') && !has(text, "//");
}

bool isTextOf(Column column, std::string_view text) {
    if (has(text, std::string_view("\0", 1))) return false;  // no text is written with one
    switch (column) {
        case location:
            return !text.empty() && !isDay(text);  // an index by day begins with the day
        case path:
            return text.starts_with('/');
        case relativePath:
            return isRelativePath(text);
        case folder:
            return text.empty() || isRelativePath(text);
        case name:
            return !text.empty() && !has(text, "/");
        case groupName:
            return !has(text, "/");
        case kind:
            return rawText(locationKindFrom(text)) == text;
        case status:
            return rawText(locationStatusFrom(text)) == text;
        case outcome:
            return text == "baseline" || text == "check";
        case action:
            return changeActionFrom(text).has_value();
        case source:
            return text == rawText(ChangeSource::measured);
        case day:
            return isDay(text);
        default:
            return column == Column::text;
    }
}

bool isIntegerOf(Column column, std::int64_t integer) {
    switch (column) {
        case flag:
            return integer == 0 || integer == 1;
        case reason:
            return integer >= 0 && integer <= 2;
        case number:
            return integer >= 1;
        case amount:
        case optionalAmount:
            return integer >= 0 && integer <= largestAmount;
        default:
            return column == delta && integer >= -largestAmount && integer <= largestAmount;
    }
}

bool isTime(double seconds) {
    constexpr double yearTenThousand = 253'402'300'800;
    return std::isfinite(seconds) && seconds >= 0 && seconds < yearTenThousand;
}

/// Whether the value may stand in the column, which may turn it into the form that it is inserted in.
bool fits(Column column, StoredValue& value) {
    if (std::holds_alternative<std::nullptr_t>(value))
        return column == rowID || column == optionalTime || column == optionalAmount || column == bookmark;
    if (const auto* text = std::get_if<std::string>(&value)) return isTextOf(column, *text);
    if (std::holds_alternative<StoredBlob>(value)) return column == bookmark;
    if (column == time || column == optionalTime) {
        // A whole number of seconds is stored as an integer.
        if (const auto* integer = std::get_if<std::int64_t>(&value)) value = static_cast<double>(*integer);
        return isTime(std::get<double>(value));
    }
    const auto* integer = std::get_if<std::int64_t>(&value);
    return integer != nullptr && isIntegerOf(column, *integer);
}

/// What a change tells twice has to agree.
bool agreesWithItself(const StoredRow& observation) {
    const auto& folderOf = std::get<std::string>(observation[2]);
    const auto& actionOf = std::get<std::string>(observation[4]);
    const auto& creditedTo = std::get<std::string>(observation[9]);
    const bool isMore = actionOf == rawText(ChangeAction::added) || actionOf == rawText(ChangeAction::grew);
    const bool isInFolder =
        creditedTo.empty() || folderOf == creditedTo || folderOf.starts_with(creditedTo + "/");
    return (std::get<std::int64_t>(observation[5]) > 0) == isMore && isInFolder;
}

}  // namespace

std::optional<SavedRow> SavedTable::accept(std::int64_t id, StoredRow row) const {
    // Columns that were added later may be missing at the end; they are the ones that may be NULL.
    if (row.size() > columns.size() || (hasRowIDs && id < 1)) return {};
    row.resize(columns.size(), nullptr);
    for (std::size_t i = 0; i < row.size(); ++i)
        if (!fits(columns[i], row[i])) return {};
    if (columns.data() == observationColumns.data() && !agreesWithItself(row)) return {};
    return SavedRow{.rowID = hasRowIDs ? id : 0, .values = std::move(row)};
}

std::string SavedTable::insertion() const {
    const auto parameters = std::ranges::count(std::string_view(columnNames), ',') + 1;
    std::string sql = fmt::format("INSERT OR IGNORE INTO {} ({}) VALUES (?", name, columnNames);
    for (auto i = parameters; i > 1; --i) sql += ", ?";
    return sql + ")";
}

std::vector<SQLiteValue> SavedTable::valuesOf(const SavedRow& row) const {
    std::vector<SQLiteValue> values;
    if (hasRowIDs) values.emplace_back(row.rowID);
    for (std::size_t i = 0; i < row.values.size(); ++i)
        if (columns[i] != rowID)
            values.push_back(std::visit([](const auto& held) { return SQLiteValue(held); }, row.values[i]));
    return values;
}

std::span<const SavedTable> savedTables() {
    return tables;
}

}  // namespace brindle
