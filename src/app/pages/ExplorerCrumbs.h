#pragma once

#include "app/ListModel.h"
#include "model/Change.h"
#include "model/Location.h"

#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace brindle {

/// One step of the way to an explorer's folder.
struct Crumb {
    int place = 0;  // in the row of steps
    QString name;
    std::optional<FolderRef> folder;  // absent: the top, above the locations
    bool isLast = false;

    bool operator==(const Crumb&) const = default;
};

using CrumbList = ListModel<Crumb, int>;

[[nodiscard]] std::unique_ptr<CrumbList> makeCrumbList();

/// The way to `folder` from the top; in the scope of one location, from its root. Of a long way the middle is
/// left out: "…" leads to the last folder of it.
[[nodiscard]] std::vector<Crumb> crumbsTo(const std::optional<FolderRef>& folder, const LocationScope& scope,
                                          const std::vector<TrackedLocation>& locations);

}  // namespace brindle
