#pragma once

#include "model/Change.h"
#include "model/DayState.h"
#include "model/FolderSummary.h"
#include "model/LocationRecord.h"
#include "model/Volume.h"
#include "model/Walk.h"

#include <nlohmann/json.hpp>
#include <optional>

// How values are written as JSON: identities as bare strings, days as records of year, month and day, points
// in time as Unix seconds, names and paths as text with U+FFFD for bytes that are not UTF-8.

namespace brindle {

/// An absent value is null.
template <class Value>
nlohmann::ordered_json orNull(const std::optional<Value>& value) {
    return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
}

void to_json(nlohmann::ordered_json& json, const LocationID& id);
void to_json(nlohmann::ordered_json& json, const LocalDay& day);
void to_json(nlohmann::ordered_json& json, const ChangeTotals& totals);
void to_json(nlohmann::ordered_json& json, const EstimateTotals& totals);
void to_json(nlohmann::ordered_json& json, const DayState& state);
void to_json(nlohmann::ordered_json& json, const FolderRef& ref);
void to_json(nlohmann::ordered_json& json, const FolderSummary& folder);
void to_json(nlohmann::ordered_json& json, const FileChange& change);
void to_json(nlohmann::ordered_json& json, const LocationRecord& record);
void to_json(nlohmann::ordered_json& json, const UnreadableFolder& folder);
void to_json(nlohmann::ordered_json& json, const VolumeReading& reading);

}  // namespace brindle
