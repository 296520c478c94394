#include "store/ChangeReads.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace brindle {
namespace {

constexpr const char* columns =
    "SELECT id, location_id, folder, name, action, delta, observed_at, source, "
    "local_day FROM observations ";

std::vector<std::string> splitPath(std::string_view path) {
    std::vector<std::string> components;
    while (!path.empty()) {
        const auto slash = path.find('/');
        components.emplace_back(path.substr(0, slash));
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    }
    return components;
}

/// Reads rows of `columns`. Thousands of changes share a folder, so each folder text is split once.
std::vector<FileChange> read(SQLiteStatement& rows) {
    std::unordered_map<std::string, std::vector<std::string>> folders;
    std::vector<FileChange> changes;
    while (rows.step()) {
        std::string folder = rows.text(2);
        auto known = folders.find(folder);
        if (known == folders.end()) {
            auto components = splitPath(folder);
            known = folders.emplace(std::move(folder), std::move(components)).first;
        }
        changes.push_back({.id = rows.int64(0),
                           .locationID = {rows.text(1)},
                           .folder = known->second,
                           .name = rows.text(3),
                           .action = changeActionFrom(rows.textView(4)).value_or(ChangeAction::added),
                           .byteDelta = rows.int64(5),
                           .observedAt = rows.real(6),
                           .day = LocalDay::parse(rows.textView(8)).value_or(LocalDay{}),
                           .source = changeSourceFrom(rows.textView(7)).value_or(ChangeSource::measured)});
    }
    return changes;
}

}  // namespace

std::vector<FileChange> changesOn(SQLiteConnection& db, const LocalDay& day,
                                  const std::optional<LocationID>& location) {
    std::string sql = std::string(columns) + "WHERE local_day = ?";
    if (location) sql += " AND location_id = ?";
    auto rows = db.prepare(sql);
    if (location)
        rows.bind(day.text(), location->rawValue);
    else
        rows.bind(day.text());
    return read(rows);
}

std::vector<FileChange> changesBetween(SQLiteConnection& db, const LocalDay& first, const LocalDay& last,
                                       const std::optional<LocationID>& location) {
    std::string sql = std::string(columns) + "WHERE local_day BETWEEN ? AND ?";
    if (location) sql += " AND location_id = ?";
    auto rows = db.prepare(sql + " ORDER BY local_day, observed_at, id");
    if (location)
        rows.bind(first.text(), last.text(), location->rawValue);
    else
        rows.bind(first.text(), last.text());
    return read(rows);
}

std::vector<FileChange> largestChangesOfCheck(SQLiteConnection& db, const LocationID& location,
                                              const LocalDay& day, UnixTime finishedAt, std::size_t limit) {
    auto rows = db.prepare(std::string(columns) +
                           "WHERE local_day = ? AND location_id = ? AND observed_at = ? "
                           "ORDER BY ABS(delta) DESC, id LIMIT ?");
    rows.bind(day.text(), location.rawValue, finishedAt, static_cast<std::int64_t>(limit));
    return read(rows);
}

}  // namespace brindle
