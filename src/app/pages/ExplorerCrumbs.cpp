#include "app/pages/ExplorerCrumbs.h"

#include "app/pages/ExplorerRows.h"
#include "app/pages/PageText.h"
#include "model/Translation.h"

#include <cstddef>
#include <iterator>

namespace brindle {
namespace {

constexpr std::ptrdiff_t mostSteps = 7;
constexpr std::ptrdiff_t stepsBefore = 2;  // the middle that is left out
constexpr std::ptrdiff_t stepsBehind = 4;

}  // namespace

std::unique_ptr<CrumbList> makeCrumbList() {
    return std::make_unique<CrumbList>(
        [](const Crumb& crumb) { return crumb.place; },
        std::vector<CrumbList::Role>{{"place", [](const Crumb& crumb) { return crumb.place; }},
                                     {"name", [](const Crumb& crumb) { return crumb.name; }},
                                     {"isLast", [](const Crumb& crumb) { return crumb.isLast; }}});
}

std::vector<Crumb> crumbsTo(const std::optional<FolderRef>& folder, const LocationScope& scope,
                            const std::vector<TrackedLocation>& locations) {
    std::vector<Crumb> crumbs;
    if (!scope.location) crumbs.push_back({.name = translated("All locations")});
    if (folder) {
        const auto& [location, components] = *folder;
        crumbs.push_back({.name = QString::fromStdString(shownLocationName(locations, location)),
                          .folder = FolderRef{location, {}}});
        for (std::size_t depth = 1; depth <= components.size(); ++depth)
            crumbs.push_back({.name = shownName(components.begin()[static_cast<std::ptrdiff_t>(depth) - 1]),
                              .folder = FolderRef{location, components.first(depth)}});
    }
    if (std::ssize(crumbs) > mostSteps) {
        const auto last = crumbs.end() - stepsBehind - 1;
        last->name = QStringLiteral("…");
        crumbs.erase(crumbs.begin() + stepsBefore, last);
    }
    for (std::size_t i = 0; i < crumbs.size(); ++i) {
        crumbs[i].place = static_cast<int>(i);
        crumbs[i].isLast = i + 1 == crumbs.size();
    }
    return crumbs;
}

}  // namespace brindle
