#pragma once

#include "model/LocationID.h"
#include "store/SQLiteConnection.h"

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// Prepares `condition` (a statement up to its last condition) and `tail` for the rows of one location, or of
/// all when it is absent, and binds the condition's values.
template <SQLiteBindable... Values>
[[nodiscard]] SQLiteStatement prepareFor(SQLiteConnection& db, const std::optional<LocationID>& location,
                                         std::string condition, std::string_view tail,
                                         const Values&... values) {
    if (location) condition += " AND location_id = ?";
    auto rows = db.prepare(condition.append(tail));
    if (location)
        rows.bind(values..., location->rawValue);
    else
        rows.bind(values...);
    return rows;
}

}  // namespace brindle
