#include "app/pages/ScopeModel.h"

#include "model/FileNameText.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>

namespace brindle {
namespace {

std::vector<TrackedLocation> offeredLocations(const HistorySnapshot& history, const LocationScope& chosen) {
    std::vector<TrackedLocation> offered;
    for (const TrackedLocation& location : history.locations)
        if (!location.trackingEnd || chosen.location == location.id) offered.push_back(location);
    return offered;
}

QStringList optionsOf(const std::vector<TrackedLocation>& locations) {
    QStringList options{translated("All locations")};
    for (const TrackedLocation& location : locations) {
        const bool isAmbiguous = std::ranges::count(locations, location.name, &TrackedLocation::name) > 1;
        std::string text = fileNameText(location.name);
        if (isAmbiguous) text = filled(translated("{0} ({1})"), text, fileNameText(location.path));
        options.push_back(QString::fromStdString(text));
    }
    return options;
}

}  // namespace

ScopeModel::ScopeModel(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    connect(&model, &AppModel::historyChanged, this, &ScopeModel::update);
    connect(model.selection(), &Selection::scopeChanged, this, &ScopeModel::update);
    update();
}

void ScopeModel::choose(int index) {
    if (index == 0) return model_.selection()->setScope({});
    if (index > 0 && std::cmp_less_equal(index, locations_.size()))
        model_.selection()->setScope({locations_[static_cast<std::size_t>(index) - 1]});
}

void ScopeModel::update() {
    const LocationScope& scope = model_.selection()->scope();
    const auto offered = offeredLocations(model_.history(), scope);
    locations_.clear();
    for (const TrackedLocation& location : offered) locations_.push_back(location.id);

    QStringList options = optionsOf(offered);
    const bool areOptionsNew = std::exchange(options_, options) != options;
    int index = 0;
    if (scope.location)
        if (const auto found = std::ranges::find(locations_, *scope.location); found != locations_.end())
            index = static_cast<int>(found - locations_.begin()) + 1;
    const bool isIndexNew = std::exchange(currentIndex_, index) != index;
    // A view that took the new options resets its place, and so hears of the place behind them.
    if (areOptionsNew) Q_EMIT optionsChanged();
    if (areOptionsNew || isIndexNew) Q_EMIT currentIndexChanged();
}

}  // namespace brindle
