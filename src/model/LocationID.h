#pragma once

#include <compare>
#include <functional>
#include <string>

namespace brindle {

/// The identity of a tracked location. The store hands out UUIDs; any text will do.
struct LocationID {
    std::string rawValue;

    auto operator<=>(const LocationID&) const = default;
};

}  // namespace brindle

template <>
struct std::hash<brindle::LocationID> {
    std::size_t operator()(const brindle::LocationID& id) const noexcept {
        return std::hash<std::string>{}(id.rawValue);
    }
};
