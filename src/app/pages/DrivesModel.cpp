#include "app/pages/DrivesModel.h"

#include "app/pages/PageText.h"
#include "app/pages/SpaceParts.h"
#include "checks/Failures.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace brindle {
namespace {

constexpr std::size_t unreadableShown = 200;

std::vector<ListModel<DriveSpaceRow, std::string>::Role> driveRoles() {
    using Row = DriveSpaceRow;
    return {{"name", [](const Row& row) { return row.drive.name; }},
            {"mountPath", [](const Row& row) { return row.drive.mountPath; }},
            {"available", [](const Row& row) { return row.drive.available; }},
            {"used", [](const Row& row) { return row.used; }},
            {"usedExact", [](const Row& row) { return row.usedExact; }},
            {"measured", [](const Row& row) { return row.measured; }},
            {"spaceParts", [](const Row& row) { return row.parts; }},
            {"notes", [](const Row& row) { return row.notes; }},
            {"reconciliation", [](const Row& row) { return row.outlook.reconciliation; }}};
}

std::vector<ListModel<LocationDetailRow, std::string>::Role> locationRoles() {
    using Row = LocationDetailRow;
    return {{"location", [](const Row& row) { return QString::fromStdString(row.location.id); }},
            {"name", [](const Row& row) { return row.location.name; }},
            {"path", [](const Row& row) { return row.location.path; }},
            {"status", [](const Row& row) { return row.location.state; }},
            {"size", [](const Row& row) { return row.location.size; }},
            {"sizeExact", [](const Row& row) { return row.sizeExact; }},
            {"lastCheck", [](const Row& row) { return row.location.lastCheck; }},
            {"unreadable", [](const Row& row) { return row.location.unreadable; }},
            {"driveName", [](const Row& row) { return row.driveName; }},
            {"cloudOnly", [](const Row& row) { return row.cloudOnly; }},
            {"isTroubled", [](const Row& row) { return row.isTroubled; }},
            {"canShow", [](const Row& row) { return row.canShow; }},
            {"canChooseAgain", [](const Row& row) { return row.canChooseAgain; }},
            {"canStop", [](const Row& row) { return row.canStop; }},
            {"canForget", [](const Row& row) { return row.canForget; }},
            {"isOpen", [](const Row& row) { return row.isOpen; }}};
}

QString cloudOnlyText(const HistoryFigures* figures, const LocationID& id) {
    if (figures == nullptr) return {};
    const auto found = figures->cloudOnlyBytes.find(id);
    if (found == figures->cloudOnlyBytes.end() || found->second == 0) return {};
    return pageText(translated("{} are only in cloud storage and take no space here."),
                    byteAmount(found->second));
}

}  // namespace

DrivesModel::DrivesModel(AppModel& model, Tracking& tracking, QObject* parent)
    : QObject(parent),
      model_(model),
      actions_(model, tracking),
      drives_([](const DriveSpaceRow& row) { return row.drive.id; }, driveRoles()),
      locations_([](const LocationDetailRow& row) { return row.location.id; }, locationRoles()),
      unreadable_([](const UnreadableRow& row) { return row.relativePath; },
                  {{"path", [](const UnreadableRow& row) { return row.path; }},
                   {"reason", [](const UnreadableRow& row) { return row.reason; }}}),
      reading_(
          [this](std::map<std::string, DriveOutlook> outlooks) {
              outlooks_ = std::move(outlooks);
              showDrives();
          },
          [this](const std::exception& error) {
              Q_EMIT model_.noted(
                  QString::fromStdString(failureSentence(error, model_.options().dataDirectory)));
          }) {
    connect(&model, &AppModel::historyChanged, this, &DrivesModel::update);
    connect(&actions_, &LocationActionsModel::offeredChanged, this, &DrivesModel::showLocations);
    update();
}

QString DrivesModel::emptySentence() const {
    return translated("The folders and drives that Brindle includes will be here.");
}

void DrivesModel::update() {
    showDrives();
    showLocations();
    showUnreadable();
    readOutlooks();
    Q_EMIT changed();
}

void DrivesModel::showDrives() {
    const HistorySnapshot& history = model_.history();
    const Calendar calendar = model_.calendar();
    std::vector<DriveSpaceRow> rows;
    for (DriveRow& drive : driveRows(history)) {
        const auto& reading = *std::ranges::find(history.volumes, drive.id, &VolumeReading::id);
        const std::int64_t used = reading.totalBytes - reading.freeBytes;
        DriveSpaceRow row{
            .used = QString::fromStdString(byteAmount(used)),
            .usedExact = QString::fromStdString(exactByteAmount(used)),
            .measured = pageText(translated("Measured {}"), calendar.timeLabel(reading.readAt))};
        if (const auto found = history.breakdowns.find(drive.id); found != history.breakdowns.end())
            row.parts = spaceParts(found->second, reading);
        if (const auto found = outlooks_.find(drive.id); found != outlooks_.end())
            row.outlook = found->second;
        for (const QString& note : {row.outlook.forecast, drive.purgeable, drive.snapshots})
            if (!note.isEmpty()) row.notes += note;
        row.drive = std::move(drive);
        rows.push_back(std::move(row));
    }
    drives_.replaceRows(std::move(rows));
}

void DrivesModel::showLocations() {
    const HistorySnapshot& history = model_.history();
    const HistoryFigures* figures = model_.figures();
    const Calendar calendar = model_.calendar();
    const auto tracked = history.currentlyTracked();
    std::vector<LocationDetailRow> rows;
    for (LocationRow& location : locationRows(history, figures, calendar)) {
        const auto& known = *std::ranges::find(tracked, LocationID{location.id}, &TrackedLocation::id);
        const auto drive = std::ranges::find(history.volumes, known.volumeID, &VolumeReading::id);
        const bool isTroubled =
            known.status == LocationStatus::disconnected || known.status == LocationStatus::needsAccess;
        LocationDetailRow row{
            .driveName = drive == history.volumes.end() ? QString() : shownName(drive->name),
            .cloudOnly = cloudOnlyText(figures, known.id),
            .isTroubled = isTroubled,
            .canShow = !history.isExample && known.status != LocationStatus::disconnected,
            // A drive is found again by being there.
            .canChooseAgain = actions_.isOffered() && isTroubled && known.kind == LocationKind::folder,
            .canStop = actions_.isOffered() && known.lastCheck,
            .canForget = actions_.isOffered() && !known.lastCheck,
            .isOpen = location.id == openLocation_ && !location.unreadable.isEmpty()};
        if (known.lastCheck) {
            row.sizeExact = QString::fromStdString(exactByteAmount(known.trackedBytes));
            location.lastCheck = pageText(translated("Checked {}"), calendar.timeLabel(*known.lastCheck));
        }
        row.location = std::move(location);
        rows.push_back(std::move(row));
    }
    locations_.replaceRows(std::move(rows));
}

void DrivesModel::showUnreadable() {
    std::vector<UnreadableRow> rows;
    moreUnreadable_.clear();
    const HistoryFigures* figures = model_.figures();
    if (figures != nullptr && !openLocation_.empty()) {
        const auto found = figures->unreadable.find(LocationID{openLocation_});
        if (found != figures->unreadable.end()) {
            for (const UnreadableFolder& folder : found->second) {
                if (rows.size() == unreadableShown) break;
                rows.push_back({.relativePath = folder.relativePath,
                                .path = shownName(folder.relativePath),
                                .reason = folder.isPermission ? translated("Access was refused")
                                                              : translated("Couldn't be read")});
            }
            if (const auto count = static_cast<std::int64_t>(found->second.size() - rows.size()); count > 0)
                moreUnreadable_ =
                    pageText(translatedCount("and {} more", "and {} more", count), groupedNumber(count));
        }
    }
    unreadable_.replaceRows(std::move(rows));
}

void DrivesModel::readOutlooks() {
    const auto source = model_.source();
    if (!source) return reading_.forget();
    reading_.ask([source, history = model_.history(), calendar = model_.calendar()] {
        return driveOutlooks(*source, history, calendar);
    });
}

void DrivesModel::toggleUnreadable(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= locations_.rows().size()) return;
    const std::string& id = locations_.rows()[place].location.id;
    openLocation_ = id == openLocation_ ? std::string() : id;
    showLocations();
    showUnreadable();
    Q_EMIT changed();
}

void DrivesModel::showInFiles(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= locations_.rows().size() || !locations_.rows()[place].canShow) return;
    const LocationID id{locations_.rows()[place].location.id};
    const auto& locations = model_.history().locations;
    Q_EMIT revealRequested(std::ranges::find(locations, id, &TrackedLocation::id)->path);
}

}  // namespace brindle
