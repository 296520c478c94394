#pragma once

#include "model/Change.h"
#include "model/Translation.h"

#include <string>
#include <unordered_map>

namespace brindle {

/// What locations are called, those included that were removed.
class LocationNames {
public:
    /// `locations`: LocationRecord or TrackedLocation.
    template <class Locations>
    explicit LocationNames(const Locations& locations) {
        for (const auto& location : locations) names_[location.id] = location.name;
    }

    /// As the file system has it. A stand-in for a location that is not there at all.
    [[nodiscard]] const std::string& of(const LocationID& id) const {
        const auto found = names_.find(id);
        return found != names_.end() ? found->second : removed_;
    }

    /// The location's name, and the folder below it.
    [[nodiscard]] std::string path(const FolderRef& ref) const {
        std::string path = of(ref.locationID);
        for (const std::string& component : ref.components) path += "/" + component;
        return path;
    }

    /// The same of a file, or of a group by its folder and what it is called.
    [[nodiscard]] std::string path(const FileChange& change) const {
        return path(FolderRef{change.locationID, change.folder}) + "/" + displayName(change);
    }

private:
    std::unordered_map<LocationID, std::string> names_;
    std::string removed_ = translated("Removed location");
};

}  // namespace brindle
