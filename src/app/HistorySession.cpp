#include "app/HistorySession.h"

#include "checks/Failures.h"
#include "checks/Maintenance.h"
#include "checks/TrackedLocations.h"
#include "model/FileNameText.h"
#include "model/Translation.h"
#include "platform/PrivateFiles.h"
#include "settings/WindowLock.h"
#include "store/HistoryFiles.h"
#include "store/Recovery.h"
#include "store/StoredHistory.h"

#include <stdexcept>
#include <utility>

namespace brindle {
namespace {

FileLock takeWindowLock(const std::string& dataDirectory) {
    auto lock = tryToTakeWindowLock(dataDirectory);
    if (!lock) throw std::runtime_error(translated("Another Brindle window uses this history."));
    return std::move(*lock);
}

HistoryFigures readFigures(HistorySource& source, HistoryStore& store) {
    HistoryFigures figures{.snapshot = source.snapshot().get(),
                           .records = store.loadLocations().get(),
                           .unreadable = {},
                           .cloudOnlyBytes = store.cloudOnlyBytes().get()};
    for (const LocationRecord& record : figures.records)
        if (auto folders = store.unreadableFolders(record.id).get(); !folders.empty())
            figures.unreadable.emplace(record.id, std::move(folders));
    return figures;
}

}  // namespace

struct HistorySession::Open {
    std::shared_ptr<HistoryStore> store;
    FileLock windowLock;
    RunLockSource locks;
    std::unique_ptr<ScanCoordinator> coordinator;  // last, so that it ends first
};

HistorySession::HistorySession(SessionParts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)) {}

HistorySession::~HistorySession() = default;

std::shared_ptr<HistorySource> HistorySession::sourceOf(const Open& history) const {
    return std::make_shared<StoredHistory>(history.store, parts_.clock.calendar(), parts_.clock.now);
}

void HistorySession::renewCalendar() {
    if (isOpen()) source_ = sourceOf(*history_);
}

HistoryStore* HistorySession::store() const {
    return history_ ? history_->store.get() : nullptr;
}

std::optional<HistoryAccess> HistorySession::access() const {
    if (!isOpen() || isStopping_) return {};
    const auto leaveOut = [history = history_](const LocationID& id) {
        return history->coordinator->leaveOut(id);
    };
    return HistoryAccess{.store = history_->store, .locks = history_->locks, .leaveOut = leaveOut};
}

ExportRecords HistorySession::exportRecords() const {
    const auto recent = [history = history_] {
        return history ? history->store->recentExports().get() : std::vector<std::string>();
    };
    const auto add = [history = history_, now = parts_.clock.now](const std::string& path) {
        if (history) history->store->recordExport(path, now()).get();
    };
    return {.recent = recent, .add = add};
}

std::shared_ptr<HistorySession::Open> HistorySession::makeOpen(bool estimatesEnabled) {
    // The lock first: who has it may be putting another file in the history's place.
    createPrivateDirectory(parts_.dataDirectory);
    FileLock windowLock = takeWindowLock(parts_.dataDirectory);
    auto store = std::make_shared<HistoryStore>(parts_.dataDirectory, parts_.clock.now);
    auto history = std::make_shared<Open>(Open{.store = store,
                                               .windowLock = std::move(windowLock),
                                               .locks = RunLockSource(parts_.dataDirectory),
                                               .coordinator = nullptr});
    history->coordinator = std::make_unique<ScanCoordinator>(
        *store, history->locks,
        [this](const CoordinatorEvent& event) { background_.post([this, event] { take(event); }); },
        estimatesEnabled, parts_.trees(), parts_.clock);
    return history;
}

void HistorySession::open(bool estimatesEnabled) {
    if (isOpen() || isOpening_ || isStopping_) return;
    beginOpening();
    // The figures too: a history that opens may be damaged where they are.
    const auto work = [this, estimatesEnabled] {
        auto history = makeOpen(estimatesEnabled);
        auto figures = readFigures(*sourceOf(*history), *history->store);
        return std::pair(std::move(history), std::move(figures));
    };
    const auto take = [this](const std::pair<std::shared_ptr<Open>, HistoryFigures>& read) {
        endOpening();
        if (isStopping_) return;
        history_ = read.first;
        renewCalendar();
        Q_EMIT opened();
        Q_EMIT figuresLoaded(read.second);
    };
    background_.run(work, take, [this](const std::exception& error) { openingFailed(error); });
}

void HistorySession::recover() {
    if (isOpen() || isOpening_ || isStopping_) return;
    beginOpening();
    const auto work = [directory = parts_.dataDirectory, now = parts_.clock.now] {
        const RunLock run = RunLockSource(directory).take(RunLock::WhenTaken::refuse, CancellationFlag());
        const FileLock window = takeWindowLock(directory);
        const HistoryLease lease{HistoryFiles(directory)};
        return recoverHistory(directory, now);
    };
    const auto tell = [this](const RecoveryReport& report) {
        endOpening();
        Q_EMIT recovered(QString::fromStdString(
            filled(translated("The history was recovered. The damaged file is kept as {}."),
                   fileNameText(report.setAside.string()))));
    };
    background_.run(work, tell, [this](const std::exception& error) { openingFailed(error); });
}

void HistorySession::beginOpening() {
    isOpening_ = true;
    Q_EMIT openingChanged();
}

void HistorySession::endOpening() {
    isOpening_ = false;
    Q_EMIT openingChanged();
}

void HistorySession::openingFailed(const std::exception& error) {
    endOpening();
    const auto* database = dynamic_cast<const SQLiteError*>(&error);
    Q_EMIT failed(QString::fromStdString(failureFinding(error, parts_.dataDirectory)),
                  database != nullptr && database->isDamage());
}

template <class Work, class Then>
void HistorySession::whileOpen(Work work, Then then) {
    if (!isOpen() || isStopping_) return;
    background_.run([history = history_, work = std::move(work)] { return work(*history); }, std::move(then),
                    [this](const std::exception& error) {
                        Q_EMIT troubled(QString::fromStdString(failureSentence(error, parts_.dataDirectory)));
                    });
}

void HistorySession::checkAll() {
    const auto locations = [](Open& history) {
        std::vector<LocationID> ids;
        for (const LocationRecord& record : trackedLocations(*history.store)) ids.push_back(record.id);
        return ids;
    };
    whileOpen(locations,
              [this](std::vector<LocationID> ids) { run(std::move(ids), Schedule::RunOf::everything); });
}

void HistorySession::checkThese(std::vector<LocationID> locations) {
    run(std::move(locations), Schedule::RunOf::some);
}

void HistorySession::run(std::vector<LocationID> locations, Schedule::RunOf extent) {
    if (!isOpen() || isStopping_ || locations.empty()) return;
    const bool joins = history_->coordinator->running().has_value();
    static_cast<void>(history_->coordinator->run({.locations = std::move(locations)}));
    if (joins) return;
    ++runs_;
    Q_EMIT runBegan(extent);
}

void HistorySession::cancelCheck() {
    if (isOpen()) history_->coordinator->cancel();
}

void HistorySession::refreshStatuses() {
    whileOpen([](Open& history) { history.coordinator->refreshStatuses().get(); },
              [this] { reloadFigures(); });
}

void HistorySession::setEstimatesEnabled(bool enabled) {
    if (!isOpen() || isStopping_) return;
    if (enabled) return history_->coordinator->enableEstimates();
    whileOpen([](Open& history) { history.coordinator->disableEstimates().get(); },
              [this] { reloadFigures(); });
}

void HistorySession::take(const CoordinatorEvent& event) {
    if (const auto* started = std::get_if<LocationStarted>(&event)) {
        activity_ = CheckActivity{.locationName = started->name};
    } else if (const auto* progress = std::get_if<LocationProgress>(&event)) {
        activity_ = CheckActivity{.locationName = progress->name,
                                  .filesSeen = progress->progress.filesSeen,
                                  .bytesSeen = progress->progress.bytesSeen,
                                  .elapsed = progress->progress.elapsed};
    } else if (const auto* estimating = std::get_if<LocationEstimating>(&event)) {
        if (!activity_) activity_.emplace();
        activity_->locationName = estimating->name;
        activity_->isEstimating = true;
    } else if (const auto* finished = std::get_if<RunFinished>(&event)) {
        // Another run may have begun before this one's end was heard.
        if (--runs_ == 0) activity_.reset();
        Q_EMIT activityChanged();
        Q_EMIT runFinished(finished->summary);
        reloadFigures();
        whileOpen(
            [this](Open& history) { maintain(*history.store, parts_.clock.now, parts_.clock.calendar()); },
            [] {});
        return;
    }
    Q_EMIT activityChanged();
}

void HistorySession::reloadFigures() {
    const int asked = ++figuresAsked_;
    const auto read = [source = source_](Open& history) { return readFigures(*source, *history.store); };
    whileOpen(read, [this, asked](const HistoryFigures& figures) {
        if (asked == figuresAsked_) Q_EMIT figuresLoaded(figures);
    });
}

void HistorySession::stop() {
    if (isStopping_) return;
    isStopping_ = true;
    const auto end = [history = history_] {
        if (!history) return;
        history->coordinator->cancel();
        if (const auto running = history->coordinator->running()) running->wait();
        // Behind everything that was handed to the writer: nothing that was begun is cut off.
        static_cast<void>(history->store->checkpoint().get());
    };
    const auto tell = [this] { Q_EMIT stopped(); };
    background_.run(end, tell, [tell](const std::exception&) { tell(); });
}

}  // namespace brindle
