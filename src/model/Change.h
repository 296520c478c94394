#pragma once

#include "model/FolderPath.h"
#include "model/LocalDay.h"
#include "model/LocationID.h"
#include "model/UnixTime.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// What happened to a file between two checks.
enum class ChangeAction { added, grew, shrank, removed };

/// Where a change comes from: seen by a check, or inferred from file dates. The two are never summed.
enum class ChangeSource { measured, estimated };

/// Which side of the changes a list shows. A change of 0 bytes passes only `all`.
enum class DirectionFilter { all, added, freed };

/// The texts under which the values are stored. An unknown text gives nothing; which value it then
/// stands for is settled by whoever reads the column.
[[nodiscard]] std::string_view rawText(ChangeAction action);
[[nodiscard]] std::string_view rawText(ChangeSource source);
[[nodiscard]] std::string_view rawText(DirectionFilter direction);
[[nodiscard]] std::optional<ChangeAction> changeActionFrom(std::string_view rawText);
[[nodiscard]] std::optional<ChangeSource> changeSourceFrom(std::string_view rawText);
[[nodiscard]] std::optional<DirectionFilter> directionFilterFrom(std::string_view rawText);

[[nodiscard]] bool passes(DirectionFilter direction, std::int64_t byteDelta);

/// A folder inside a location. Order: location, then path.
struct FolderRef {
    LocationID locationID;
    FolderPath components;  // empty: the location's root

    auto operator<=>(const FolderRef&) const = default;
};

/// What a page or an export covers: one location, or all of them.
struct LocationScope {
    std::optional<LocationID> location;  // absent: all locations

    bool operator==(const LocationScope&) const = default;
    [[nodiscard]] bool holds(const LocationID& id) const { return !location || *location == id; }
};

/// One change to one file, or to a group of small files summed together.
struct FileChange {
    std::int64_t id = 0;  // unique within one source of history
    LocationID locationID;
    FolderPath folder;  // empty: directly in the location's root
    std::string name;   // bytes of the file system; may be empty for a group
    ChangeAction action = ChangeAction::added;
    std::int64_t byteDelta = 0;  // positive for added and grew, negative for shrank and removed
    UnixTime observedAt = 0;
    LocalDay day;
    ChangeSource source = ChangeSource::measured;
    std::int64_t fileCount = 1;

    bool operator==(const FileChange&) const = default;
};

/// The name of a single file, or "1,240 smaller files" for a group, counted in the user's digits.
[[nodiscard]] std::string displayName(const FileChange& change);

/// What changes add up to, in bytes and files. `freed` is a magnitude.
struct ChangeTotals {
    std::int64_t added = 0;
    std::int64_t freed = 0;
    std::int64_t count = 0;

    bool operator==(const ChangeTotals&) const = default;

    /// Adds `fileCount` files that changed by `byteDelta` together; a delta of 0 counts its files only.
    void add(std::int64_t byteDelta, std::int64_t fileCount);
    void add(const FileChange& change) { add(change.byteDelta, change.fileCount); }
    ChangeTotals& operator+=(const ChangeTotals& other);

    [[nodiscard]] std::int64_t net() const;     // added - freed
    [[nodiscard]] std::int64_t volume() const;  // added + freed
};

}  // namespace brindle

template <>
struct std::hash<brindle::FolderRef> {
    std::size_t operator()(const brindle::FolderRef& ref) const noexcept {
        std::size_t seed = std::hash<brindle::LocationID>{}(ref.locationID);
        for (const auto& component : ref.components) seed = seed * 31 + std::hash<std::string>{}(component);
        return seed;
    }
};
