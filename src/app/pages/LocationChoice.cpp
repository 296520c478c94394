#include "app/pages/LocationChoice.h"

#include "app/pages/PageText.h"
#include "model/NestedPath.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>

namespace brindle {
namespace {

std::vector<ListModel<ChosenRow, LocationID>::Role> chosenRoles() {
    using Row = ChosenRow;
    return {{"name", [](const Row& row) { return row.name; }},
            {"detail", [](const Row& row) { return row.detail; }},
            {"obstacle", [](const Row& row) { return row.obstacle; }},
            {"isDrive", [](const Row& row) { return row.isDrive; }},
            {"canTakeOut", [](const Row& row) { return row.canTakeOut; }}};
}

std::vector<ListModel<SuggestionRow, std::string>::Role> suggestionRoles() {
    using Row = SuggestionRow;
    return {{"name", [](const Row& row) { return row.name; }},
            {"detail", [](const Row& row) { return row.detail; }},
            {"obstacle", [](const Row& row) { return row.obstacle; }},
            {"isDrive", [](const Row& row) { return row.drive.has_value(); }}};
}

QString obstacleOf(const LocationRecord& record) {
    if (record.status == LocationStatus::disconnected) return translated("Disconnected");
    if (record.status == LocationStatus::needsAccess) return translated("Needs access");
    return {};
}

}  // namespace

LocationChoice::LocationChoice(AppModel& model, Tracking& tracking, std::string home, QObject* parent)
    : QObject(parent),
      model_(model),
      tracking_(tracking),
      home_(std::move(home)),
      chosen_([](const ChosenRow& row) { return row.id; }, chosenRoles()),
      suggestions_([](const SuggestionRow& row) { return row.path; }, suggestionRoles()) {
    connect(&model, &AppModel::recordsChanged, this, &LocationChoice::update);
    connect(&model, &AppModel::checkingChanged, this, &LocationChoice::changed);
    connect(&tracking, &Tracking::proposed, this, &LocationChoice::take);
    connect(&tracking, &Tracking::refused, this, [this](const QString& sentence) {
        if (std::exchange(isLooking_, false)) tell(sentence);
    });
    connect(&tracking, &Tracking::failed, this, [this](const QString& sentence) {
        if (model_.isSetupShown()) tell(sentence);
    });
    connect(&tracking, &Tracking::changingChanged, this, &LocationChoice::changed);
    connect(&tracking, &Tracking::drivesFound, this, [this](const std::vector<DriveChoice>& drives) {
        drives_ = drives;
        update();
    });
    update();
}

QString LocationChoice::message() const {
    if (tracking_.isChanging() && model_.isChecking())
        return translated("The list changes when the check that is running is done with its location.");
    return message_;
}

QString LocationChoice::questionTitle() const {
    return asked_ ? pageText(translated("Include “{}”?"), fileNameText(asked_->record.name)) : QString();
}

void LocationChoice::refresh() {
    asked_.reset();
    tell({});
    tracking_.findDrives();
}

void LocationChoice::includeSuggestion(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= suggestions_.rows().size() || !suggestions_.rows()[place].obstacle.isEmpty()) return;
    const SuggestionRow row = suggestions_.rows()[place];
    tell({});
    isLooking_ = true;
    row.drive ? tracking_.proposeDrive(*row.drive) : tracking_.propose(row.path);
}

void LocationChoice::include(const std::string& path) {
    tell({});
    isLooking_ = true;
    tracking_.propose(path);
}

void LocationChoice::takeOut(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= chosen_.rows().size() || !chosen_.rows()[place].canTakeOut) return;
    tell({});
    tracking_.forget(chosen_.rows()[place].id);
}

void LocationChoice::take(const TrackingProposal& proposal) {
    if (proposal.isKnown || !std::exchange(isLooking_, false)) return;
    if (proposal.isRefused) return tell(proposal.explanation);
    if (proposal.explanation.isEmpty()) return tracking_.include(proposal.record);
    asked_ = proposal;
    Q_EMIT changed();
}

void LocationChoice::answer(bool includes) {
    const auto asked = std::exchange(asked_, std::nullopt);
    if (asked && includes) tracking_.include(asked->record);
    Q_EMIT changed();
}

void LocationChoice::tell(const QString& message) {
    message_ = message;
    Q_EMIT changed();
}

void LocationChoice::update() {
    showChosen();
    showSuggestions();
    Q_EMIT changed();
}

void LocationChoice::showChosen() {
    std::vector<ChosenRow> rows;
    for (const LocationRecord& record : model_.records()) {
        if (record.removedAt) continue;
        const std::string path = fileNameText(record.path);
        rows.push_back({.id = record.id,
                        .name = shownName(record.name),
                        .detail = record.baselineAt ? pageText(translated("{} · already checked"), path)
                                                    : QString::fromStdString(path),
                        .obstacle = obstacleOf(record),
                        .isDrive = record.kind == LocationKind::volume,
                        .canTakeOut = !record.baselineAt});
    }
    chosen_.replaceRows(std::move(rows));
}

/// Whether the check of an included location comes there: it enters no drive that is mounted on the way.
bool LocationChoice::isIncluded(const std::string& path) const {
    return std::ranges::any_of(model_.records(), [&](const LocationRecord& record) {
        const auto isBetween = [&](const DriveChoice& choice) {
            const std::string& mountPath = choice.drive.mountPath;
            return mountPath != record.scanPath && liesAtOrBelow(mountPath, record.scanPath, true) &&
                   liesAtOrBelow(path, mountPath, true);
        };
        return !record.removedAt && liesAtOrBelow(path, record.scanPath, record.caseSensitive) &&
               std::ranges::none_of(drives_, isBetween);
    });
}

void LocationChoice::showSuggestions() {
    std::vector<SuggestionRow> rows;
    if (!home_.empty() && !isIncluded(home_))
        rows.push_back({.path = home_,
                        .name = translated("Your home folder"),
                        .detail = pageText(translated("{} · a good place to begin"), fileNameText(home_))});
    for (const DriveChoice& choice : drives_) {
        const DriveInfo& drive = choice.drive;
        if (drive.mountPath == home_ || isIncluded(drive.scanPath)) continue;
        const std::string path = fileNameText(drive.mountPath);
        rows.push_back({.path = drive.mountPath,
                        .name = shownName(drive.name),
                        .detail = choice.totalBytes > 0 ? pageText(translated("{0} · whole drive, {1}"), path,
                                                                   byteAmount(choice.totalBytes))
                                                        : QString::fromStdString(path),
                        .obstacle = QString::fromStdString(choice.reason),
                        .drive = drive});
    }
    suggestions_.replaceRows(std::move(rows));
}

}  // namespace brindle
