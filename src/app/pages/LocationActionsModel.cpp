#include "app/pages/LocationActionsModel.h"

#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <QStringList>
#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace brindle {
namespace {

constexpr std::chrono::milliseconds beforeAWord{400};

/// The row for those who do not see it.
QString spoken(const DriveChoiceRow& row) {
    QStringList parts{row.name, row.mountPath, row.size, row.reason};
    parts.removeAll(QString());
    return parts.join(", ");
}

std::vector<ListModel<DriveChoiceRow, std::string>::Role> driveRoles() {
    using Row = DriveChoiceRow;
    return {{"name", [](const Row& row) { return row.name; }},
            {"mountPath", [](const Row& row) { return row.mountPath; }},
            {"size", [](const Row& row) { return row.size; }},
            {"reason", [](const Row& row) { return row.reason; }},
            {"spoken", [](const Row& row) { return spoken(row); }},
            {"action", [](const Row& row) { return row.action; }}};
}

}  // namespace

LocationActionsModel::LocationActionsModel(AppModel& model, Tracking& tracking, QObject* parent)
    : QObject(parent),
      model_(model),
      tracking_(tracking),
      drives_([](const DriveChoiceRow& row) { return row.drive.id; }, driveRoles()) {
    for (const auto changed : {&AppModel::modeChanged, &AppModel::setupShownChanged})
        connect(&model, changed, this, [this] {
            proposing_ = Proposing::nothing;
            dismiss();
            Q_EMIT offeredChanged();
        });
    connect(&tracking, &Tracking::proposed, this, &LocationActionsModel::take);
    connect(&tracking, &Tracking::refused, this, &LocationActionsModel::refuse);
    connect(&tracking, &Tracking::drivesFound, this, &LocationActionsModel::takeDrives);
    connect(&tracking, &Tracking::failed, this, [this](const QString& sentence) {
        if (!isOffered()) return;
        if (sheet_ != NoSheet) return Q_EMIT model_.noted(sentence);  // beside the question that is open
        show(Telling, {.title = translated("Nothing was changed"),
                       .text = sentence,
                       .dismissTitle = translated("Close")});
    });

    patience_.setSingleShot(true);
    patience_.setInterval(beforeAWord);
    connect(&patience_, &QTimer::timeout, this, [this] {
        isWaitingLong_ = true;
        Q_EMIT waitingChanged();
    });
    connect(&tracking, &Tracking::changingChanged, this, &LocationActionsModel::updateWaiting);
    connect(&model, &AppModel::checkingChanged, this, &LocationActionsModel::waitingChanged);
}

bool LocationActionsModel::isOffered() const {
    return model_.mode() == AppMode(PlainMode::tracking) && !model_.isSetupShown();
}

QString LocationActionsModel::waitingText() const {
    if (!isWaitingLong_ || !model_.checking()) return {};
    return pageText(translated("Your change is made as soon as the check of “{}” is over."),
                    fileNameText(model_.checking()->locationName));
}

void LocationActionsModel::updateWaiting() {
    if (tracking_.isChanging()) return patience_.start();
    patience_.stop();
    isWaitingLong_ = false;
    Q_EMIT waitingChanged();
}

void LocationActionsModel::addFolder() {
    if (!isOffered()) return;
    again_.reset();
    Q_EMIT folderRequested();
}

void LocationActionsModel::chooseAgain(const QString& location) {
    const LocationRecord* record = trackedRecord(location);
    if (record == nullptr) return;
    again_ = record->id;
    Q_EMIT folderRequested();
}

void LocationActionsModel::takeFolder(const std::string& path) {
    if (!isOffered()) return;
    proposing_ = Proposing::folder;
    if (again_)
        tracking_.proposeAgain(*again_, path);
    else
        tracking_.propose(path);
}

void LocationActionsModel::addDrive() {
    if (!isOffered()) return;
    drives_.replaceRows({});
    show(ChoosingDrive, {.title = translated("Add a drive"),
                         .text = translated("Looking for drives…"),
                         .dismissTitle = translated("Close")});
    tracking_.findDrives();
}

void LocationActionsModel::takeDrives(const std::vector<DriveChoice>& drives) {
    if (sheet_ != ChoosingDrive) return;
    std::vector<DriveChoiceRow> rows;
    rows.reserve(drives.size());
    for (const DriveChoice& choice : drives)
        rows.push_back({.drive = choice.drive,
                        .name = shownName(choice.drive.name),
                        .mountPath = shownName(choice.drive.mountPath),
                        .size = choice.totalBytes > 0 ? QString::fromStdString(byteAmount(choice.totalBytes))
                                                      : QString(),
                        .reason = QString::fromStdString(choice.reason),
                        .action = pageText(translated("Include “{}”"), fileNameText(choice.drive.name))});
    words_.text = rows.empty() ? translated("No other drive is connected.")
                               : translated(
                                     "A drive is checked as a whole, except for the system's own folders "
                                     "on it.");
    drives_.replaceRows(std::move(rows));
    Q_EMIT sheetChanged();
}

void LocationActionsModel::includeDrive(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (sheet_ != ChoosingDrive || place >= drives_.rows().size()) return;
    const DriveChoiceRow choice = drives_.rows()[place];
    if (!choice.reason.isEmpty()) return;
    dismiss();
    proposing_ = Proposing::drive;
    tracking_.proposeDrive(choice.drive);
}

void LocationActionsModel::take(const TrackingProposal& proposal) {
    if (proposing_ == Proposing::nothing) return;
    if (proposal.isRefused) return refuse(proposal.explanation);
    proposing_ = Proposing::nothing;
    if (proposal.explanation.isEmpty()) return store(proposal);
    const std::string name = fileNameText(proposal.record.name);
    ask({.title = pageText(
             proposal.isKnown ? translated("Use this folder for “{}”?") : translated("Include “{}”?"), name),
         .text = proposal.explanation,
         .confirmTitle = proposal.isKnown ? translated("Use This Folder") : translated("Include"),
         .dismissTitle = translated("Cancel"),
         .isDestructive = proposal.isKnown},
        [this, proposal] { store(proposal); });
}

void LocationActionsModel::refuse(const QString& sentence) {
    const Proposing refused = std::exchange(proposing_, Proposing::nothing);
    if (refused == Proposing::nothing) {
        if (sheet_ == ChoosingDrive)
            show(sheet_, {.title = words_.title, .text = sentence, .dismissTitle = words_.dismissTitle});
        return;
    }
    const bool isDrive = refused == Proposing::drive;
    onConfirm_ = [this, isDrive] { isDrive ? addDrive() : Q_EMIT folderRequested(); };
    show(Telling, {.title = isDrive  ? translated("This drive can't be included")
                            : again_ ? translated("This folder can't be used")
                                     : translated("This folder can't be included"),
                   .text = sentence,
                   .confirmTitle = translated("Choose Another…"),
                   .dismissTitle = translated("Close")});
}

void LocationActionsModel::store(const TrackingProposal& proposal) {
    if (proposal.isKnown)
        tracking_.chooseAgain(proposal.record);
    else
        tracking_.include(proposal.record);
}

void LocationActionsModel::stopTracking(const QString& location) {
    const LocationRecord* record = trackedRecord(location);
    if (record == nullptr) return;
    ask({.title = pageText(translated("Stop tracking “{}”?"), fileNameText(record->name)),
         .text = translated(
             "Brindle no longer checks it. What was recorded stays in the history and can still be "
             "read. The files themselves are left alone. Included again, it starts anew."),
         .confirmTitle = translated("Stop Tracking"),
         .dismissTitle = translated("Keep Tracking"),
         .isDestructive = true},
        [this, id = record->id] { tracking_.stopTracking(id); });
}

void LocationActionsModel::forget(const QString& location) {
    const LocationRecord* record = trackedRecord(location);
    if (record == nullptr) return;
    ask({.title = pageText(translated("Forget “{}”?"), fileNameText(record->name)),
         .text =
             translated("It hasn't been checked yet, so nothing was recorded that could be kept. The files "
                        "themselves are left alone."),
         .confirmTitle = translated("Forget"),
         .dismissTitle = translated("Cancel"),
         .isDestructive = true},
        [this, id = record->id] { tracking_.forget(id); });
}

void LocationActionsModel::confirm() {
    const auto onConfirm = std::exchange(onConfirm_, nullptr);
    dismiss();
    if (onConfirm) onConfirm();
}

void LocationActionsModel::dismiss() {
    onConfirm_ = nullptr;
    if (sheet_ == NoSheet) return;
    // The words stay while the sheet fades.
    sheet_ = NoSheet;
    Q_EMIT sheetChanged();
}

void LocationActionsModel::ask(Words words, std::function<void()> onConfirm) {
    onConfirm_ = std::move(onConfirm);
    show(Asking, std::move(words));
}

void LocationActionsModel::show(Sheet sheet, Words words) {
    sheet_ = sheet;
    words_ = std::move(words);
    Q_EMIT sheetChanged();
}

const LocationRecord* LocationActionsModel::trackedRecord(const QString& location) const {
    if (!isOffered()) return nullptr;
    const auto& records = model_.records();
    const auto found = std::ranges::find_if(records, [&](const LocationRecord& record) {
        return !record.removedAt && record.id.rawValue == location.toStdString();
    });
    return found != records.end() ? &*found : nullptr;
}

}  // namespace brindle
