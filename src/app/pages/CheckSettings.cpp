#include "app/pages/CheckSettings.h"

#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

namespace brindle {
namespace {

std::vector<ListModel<IncludedLocationRow, std::string>::Role> roles() {
    return {{"name", [](const IncludedLocationRow& row) { return row.location.name; }},
            {"path", [](const IncludedLocationRow& row) { return row.location.path; }},
            {"status", [](const IncludedLocationRow& row) { return row.location.state; }},
            {"unreadable", [](const IncludedLocationRow& row) { return row.location.unreadable; }},
            {"isTroubled", [](const IncludedLocationRow& row) { return row.isTroubled; }},
            {"canShow", [](const IncludedLocationRow& row) { return row.canShow; }}};
}

}  // namespace

CheckSettings::CheckSettings(AppModel& model, QObject* parent)
    : QObject(parent),
      model_(model),
      locations_([](const IncludedLocationRow& row) { return row.location.id; }, roles()) {
    connect(model.settings(), &Settings::checksPausedChanged, this, &CheckSettings::changed);
    connect(model.settings(), &Settings::checkIntervalChanged, this, &CheckSettings::changed);
    connect(model.settings(), &Settings::showsEstimatesChanged, this, &CheckSettings::changed);
    connect(model.settings(), &Settings::notifiesAboutGrowthChanged, this, &CheckSettings::changed);
    connect(&model, &AppModel::recordsChanged, this, &CheckSettings::updateLocations);
    connect(&model, &AppModel::modeChanged, this, &CheckSettings::updateLocations);
    updateLocations();
}

QStringList CheckSettings::intervals() const {
    QStringList texts;
    for (const int minutes : checkIntervals)
        texts += pageText(translatedCount("{} minute", "{} minutes", minutes), groupedNumber(minutes));
    return texts;
}

int CheckSettings::interval() const {
    const auto* const found = std::ranges::find(checkIntervals, model_.settings()->checkInterval());
    return static_cast<int>(found - checkIntervals.begin());
}

void CheckSettings::setInterval(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place < checkIntervals.size()) model_.settings()->setCheckInterval(checkIntervals.at(place));
}

QString CheckSettings::scheduleText() const {
    return translated(platformText::afterSleep);
}

QString CheckSettings::locationsText() const {
    if (hasLocations()) return {};
    if (std::holds_alternative<ModeUnavailable>(model_.mode()))
        return translated("Your locations can't be shown, because the history can't be opened.");
    if (model_.session().isOpen())
        return model_.mode() == AppMode(PlainMode::starting) ? QString()
                                                             : translated("No locations included yet.");
    // The example does without the user's own history.
    return model_.mode() == AppMode(PlainMode::example)
               ? translated("Your own locations are listed here once your history is shown.")
               : QString();
}

void CheckSettings::updateLocations() {
    std::vector<IncludedLocationRow> rows;
    if (model_.session().isOpen()) {
        const HistoryFigures& own = model_.ownFigures();
        const auto tracked = own.snapshot.currentlyTracked();
        for (LocationRow& location : locationRows(own.snapshot, &own, model_.calendar())) {
            const auto& known = *std::ranges::find(tracked, LocationID{location.id}, &TrackedLocation::id);
            const bool isAway = known.status == LocationStatus::disconnected;
            rows.push_back({.location = std::move(location),
                            .folder = known.path,
                            .isTroubled = isAway || known.status == LocationStatus::needsAccess,
                            .canShow = !isAway});
        }
    }
    locations_.replaceRows(std::move(rows));
    Q_EMIT locationsChanged();
}

void CheckSettings::showInFiles(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place < locations_.rows().size() && locations_.rows()[place].canShow)
        Q_EMIT revealRequested(locations_.rows()[place].folder);
}

QString CheckSettings::estimatesText() {
    return translated(
        "Uses the creation dates and current sizes of files that were already there. Estimated from file "
        "dates. Earlier deletions aren't included. Estimates are always labeled and never added to measured "
        "totals. Turning this off removes them.");
}

QString CheckSettings::noticesText() {
    return translated(
        "At most one notification a day: when a folder grew by much more than it usually does, when a drive "
        "will soon be full, or when a location couldn't be checked for a week.");
}

}  // namespace brindle
