#include "app/Tracking.h"

#include "app/pages/PageText.h"
#include "checks/Failures.h"
#include "checks/TrackedLocations.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>

namespace brindle {
namespace {

constexpr int oneThread = 1;

}  // namespace

Tracking::Tracking(AppModel& model, QObject* parent) : QObject(parent), model_(model), changes_(oneThread) {
    connect(&model, &AppModel::recordsChanged, this, &Tracking::endChange);
    connect(&model.session(), &HistorySession::troubled, this, &Tracking::endChange);
    connect(&model.session(), &HistorySession::runFinished, this, [this](const CheckRunSummary& summary) {
        for (const CheckCommit& commit : summary.committed) unchecked_.erase(commit.locationID);
        // Whoever stops a check does not want the next one to begin at once.
        if (summary.cancelled) unchecked_.clear();
    });
    // Behind all that the new figures bring about: a run of everything that begins now checks these, too.
    connect(&model, &AppModel::recordsChanged, this, &Tracking::checkNow, Qt::QueuedConnection);
}

Tracking::~Tracking() = default;

void Tracking::propose(const std::string& path) {
    const auto look = [path](HistoryStore& store) {
        return proposeLocation(path, trackedLocations(store), systemNow());
    };
    proposeWith(look, false);
}

void Tracking::proposeDrive(const DriveInfo& drive) {
    const auto look = [drive](HistoryStore& store) {
        return brindle::proposeDrive(drive, trackedLocations(store), systemNow());
    };
    proposeWith(look, false);
}

void Tracking::proposeAgain(const LocationID& id, const std::string& path) {
    proposeWith([id, path](HistoryStore& store) { return brindle::proposeAgain(store, id, path); }, true);
}

void Tracking::proposeWith(Proposing propose, bool isKnown) {
    const auto access = model_.session().access();
    if (!access) return;
    const int asked = ++proposals_;
    looking_.run(
        [store = access->store, propose = std::move(propose)] { return propose(*store); },
        [this, asked, isKnown](LocationProposal proposal) {
            if (asked != proposals_) return;
            Q_EMIT proposed({.record = std::move(proposal.record),
                             .overlap = std::move(proposal.overlap),
                             .explanation = QString::fromStdString(proposal.explanation),
                             .isRefused = proposal.isRefused,
                             .isKnown = isKnown});
        },
        [this, asked](const std::exception& error) {
            if (asked != proposals_) return;
            Q_EMIT refused(QString::fromStdString(failureSentence(error, model_.options().dataDirectory)));
        });
}

void Tracking::include(const LocationRecord& record) {
    change({.failure = translated("Couldn't include “{0}”. {1}"),
            .id = record.id,
            .name = record.name,
            .isCheckedNext = true,
            .apply = [record](HistoryStore& store) { includeLocation(store, record); }});
}

void Tracking::chooseAgain(const LocationRecord& record) {
    change({.failure = translated("Couldn't choose the folder of “{0}”. {1}"),
            .id = record.id,
            .name = record.name,
            .isCheckedNext = true,
            .apply = [record](HistoryStore& store) { chooseLocationAgain(store, record); }});
}

void Tracking::stopTracking(const LocationID& id) {
    change({.failure = translated("Couldn't stop tracking “{0}”. {1}"),
            .id = id,
            .name = nameOf(id),
            .apply = [id](HistoryStore& store) { brindle::stopTracking(store, id, systemNow()); }});
}

void Tracking::forget(const LocationID& id) {
    change({.failure = translated("Couldn't forget “{0}”. {1}"),
            .id = id,
            .name = nameOf(id),
            .apply = [id](HistoryStore& store) { forgetLocation(store, id); }});
}

void Tracking::change(Change change) {
    const auto access = model_.session().access();
    if (!access) return;
    if (++changing_ == 1) Q_EMIT changingChanged();
    // From now on, so that a change before this one has not to wait for the location's walk either.
    auto work = [store = access->store, locks = access->locks, leftOut = access->leaveOut(change.id),
                 apply = std::move(change.apply)]() mutable {
        const RunLock lock = locks.take(RunLock::WhenTaken::refuse, CancellationFlag());
        apply(*store);
        leftOut.reset();  // it may be checked next
    };
    changes_.run(
        std::move(work),
        [this, id = change.id, isCheckedNext = change.isCheckedNext] {
            if (isCheckedNext) unchecked_.insert(id);
            ++stored_;
            model_.session().reloadFigures();
        },
        [this, failure = change.failure, name = change.name](const std::exception& error) {
            if (--changing_ == 0) Q_EMIT changingChanged();
            Q_EMIT failed(pageText(failure, fileNameText(name),
                                   failureSentence(error, model_.options().dataDirectory)));
        });
}

void Tracking::endChange() {
    if (stored_ == 0) return;
    changing_ -= std::exchange(stored_, 0);
    if (changing_ == 0) Q_EMIT changingChanged();
    Q_EMIT changed();
}

void Tracking::checkNow() {
    if (unchecked_.empty() || model_.session().isChecking()) return;
    const auto next = std::exchange(unchecked_, {});
    if (model_.mode() != AppMode(PlainMode::tracking) || model_.settings()->checksPaused()) return;
    model_.session().checkThese({next.begin(), next.end()});
}

void Tracking::findDrives() {
    const auto access = model_.session().access();
    if (!access) return;
    looking_.run(
        [store = access->store] { return driveChoices(trackedLocations(*store)); },
        [this](const std::vector<DriveChoice>& drives) { Q_EMIT drivesFound(drives); },
        [this](const std::exception& error) {
            Q_EMIT refused(QString::fromStdString(failureSentence(error, model_.options().dataDirectory)));
        });
}

std::string Tracking::nameOf(const LocationID& id) const {
    const auto& records = model_.records();
    const auto found = std::ranges::find(records, id, &LocationRecord::id);
    return found != records.end() ? found->name : std::string();
}

}  // namespace brindle
