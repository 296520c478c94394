#include "app/AppModel.h"

#include "checks/Failures.h"
#include "model/Translation.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindle {
namespace {

Schedule::Interval intervalOf(const Settings& settings) {
    return std::chrono::minutes(settings.checkInterval());
}

}  // namespace

AppModel::AppModel(AppParts parts, QObject* parent)
    : QObject(parent),
      options_(std::move(parts.options)),
      sessionParts_(std::move(parts.session)),
      settings_(parts.preferences, std::move(parts.settingsFile)),
      selection_(today(), sessionParts_.clock.calendar),
      loginItem_(std::move(parts.loginItem)),
      loginItemStatus_(loginItem_->status()),
      makeExample_(std::move(parts.example)),
      alarm_(std::move(parts.alarm)),
      wantsExample_(options_.startInExample),
      session_(sessionParts_),
      schedule_(*alarm_, std::move(parts.uptime),
                {.checkAll = [this] { session_.checkAll(); },
                 .checkThese = [this](const std::vector<LocationID>& ids) { session_.checkThese(ids); },
                 .refreshStatuses = [this] { session_.refreshStatuses(); },
                 .disconnectedLocations = [this] { return disconnectedLocations(); }},
                intervalOf(settings_), settings_.checksPaused()),
      updates_(parts.updates([this] { return session_.isChecking(); })) {
    history_.today = today();
    connectParts();
}

AppModel::~AppModel() = default;

void AppModel::connectParts() {
    connect(&session_, &HistorySession::openingChanged, this, &AppModel::openingChanged);
    connect(&session_, &HistorySession::opened, this, [this] { areEstimatesSettled_ = false; });
    connect(&session_, &HistorySession::failed, this, [this](const QString& sentence, bool isDamaged) {
        if (!isExampleShown()) setMode(ModeUnavailable{sentence.toStdString(), isDamaged});
    });
    connect(&session_, &HistorySession::recovered, this, [this](const QString& sentence) {
        Q_EMIT noted(sentence);
        session_.open(settings_.showsEstimates());
    });
    connect(&session_, &HistorySession::activityChanged, this, &AppModel::checkingChanged);
    connect(&session_, &HistorySession::runBegan, this,
            [this](Schedule::RunOf extent) { schedule_.runBegan(extent); });
    connect(&session_, &HistorySession::runFinished, this, [this](const CheckRunSummary& summary) {
        lastRun_ = summary;
        isRunOver_ = true;
        Q_EMIT lastRunChanged();
        if (!session_.isChecking()) updates_->runPostponedInstall();
    });
    connect(&session_, &HistorySession::figuresLoaded, this, &AppModel::take);
    connect(&session_, &HistorySession::troubled, this, [this](const QString& sentence) {
        if (std::exchange(isRunOver_, false)) schedule_.runEnded();
        if (mode_ == AppMode(PlainMode::starting)) return setMode(ModeUnavailable{sentence.toStdString()});
        Q_EMIT noted(sentence);
    });
    connect(&session_, &HistorySession::stopped, this, &AppModel::readyToQuit);

    connect(&settings_, &Settings::noted, this, &AppModel::noted);
    connect(updates_.get(), &UpdateController::noted, this, &AppModel::noted);
    connect(&settings_, &Settings::checkIntervalChanged, this,
            [this] { schedule_.setInterval(intervalOf(settings_)); });
    connect(&settings_, &Settings::checksPausedChanged, this,
            [this] { schedule_.setPaused(settings_.checksPaused()); });
    connect(&settings_, &Settings::showsEstimatesChanged, this, [this] {
        session_.setEstimatesEnabled(settings_.showsEstimates());
        reloadDetails();
    });

    for (const auto changed : {&Selection::periodChanged, &Selection::scopeChanged, &Selection::rangeChanged})
        connect(&selection_, changed, this, &AppModel::reloadDetails);
    connect(&dayDetails_, &DayDetails::loaded, this, [this](const std::shared_ptr<const Details>& details) {
        details_ = details;
        contributors_->replaceRows(folderRows(details_->contributors, history_));
        ++dayChangesRevision_;
        Q_EMIT detailsChanged();
    });
    connect(&dayDetails_, &DayDetails::failed, this, [this](const std::exception& error) {
        Q_EMIT noted(QString::fromStdString(failureSentence(error, options_.dataDirectory)));
        Q_EMIT detailsFailed();
    });
}

LocalDay AppModel::today() const {
    return sessionParts_.clock.calendar().day(sessionParts_.clock.now());
}

std::shared_ptr<HistorySource> AppModel::source() const {
    return isExampleShown() ? example_ : session_.source();
}

QString AppModel::checkingText() const {
    return checking() ? QString::fromStdString(description(*checking())) : QString();
}

std::vector<LocationID> AppModel::disconnectedLocations() const {
    std::vector<LocationID> ids;
    for (const LocationRecord& record : own_.records)
        if (!record.removedAt && record.status == LocationStatus::disconnected) ids.push_back(record.id);
    return ids;
}

void AppModel::setMode(AppMode mode) {
    if (mode_ == mode) return;
    const bool wasSetupShown = isSetupShown();
    mode_ = std::move(mode);
    if (mode_ == AppMode(PlainMode::tracking))
        schedule_.begin();
    else
        schedule_.end();
    Q_EMIT modeChanged();
    if (isSetupShown() != wasSetupShown) Q_EMIT setupShownChanged();
}

bool AppModel::isSetupShown() const {
    return mode_ == AppMode(PlainMode::onboarding) || mode_ == AppMode(PlainMode::setup) ||
           (wantsSetup_ && mode_ == AppMode(PlainMode::tracking));
}

void AppModel::setWantsSetup(bool wants) {
    if (std::exchange(wantsSetup_, wants) != wants) Q_EMIT setupShownChanged();
}

void AppModel::start() {
    if (std::exchange(hasStarted_, true)) return;
    if (wantsExample_)
        showExample();
    else
        retryOpening();
}

void AppModel::retryOpening() {
    if (!options_.trackingEnabled || isShuttingDown_) return;
    setMode(PlainMode::starting);
    if (session_.isOpen())
        session_.reloadFigures();
    else
        session_.open(settings_.showsEstimates());
}

void AppModel::recoverHistory() {
    const auto* unavailable = std::get_if<ModeUnavailable>(&mode_);
    if (unavailable == nullptr || !unavailable->canRecover || isShuttingDown_) return;
    setMode(PlainMode::starting);
    session_.recover();
}

void AppModel::route() {
    if (!session_.isOpen() || isShuttingDown_) return;
    setWantsSetup(false);
    chooseMode();
}

void AppModel::chooseMode() {
    selection_.setScope({});
    const auto hasBaseline = [](const LocationRecord& record) { return record.baselineAt.has_value(); };
    if (wantsExample_)
        showExample();
    else if (!settings_.startupSetupCompleted())
        setMode(PlainMode::onboarding);
    else
        setMode(std::ranges::any_of(own_.records, hasBaseline) ? PlainMode::tracking : PlainMode::setup);
    if (!isExampleShown()) show(own_.snapshot);
}

void AppModel::take(const HistoryFigures& figures) {
    own_ = figures;
    ownToday_ = ownTodayOf(own_.snapshot);
    Q_EMIT recordsChanged();
    Q_EMIT ownTodayChanged();
    if (mode_ == AppMode(PlainMode::starting))
        chooseMode();
    else if (!isExampleShown())
        show(own_.snapshot);
    const bool isAfterRun = std::exchange(isRunOver_, false);
    if (isAfterRun) schedule_.runEnded();
    if (isAfterRun) Q_EMIT runTaken();
    if (!std::exchange(areEstimatesSettled_, true)) settleEstimates();
}

// The user may have switched them while the history was not open.
void AppModel::settleEstimates() {
    const bool shows = settings_.showsEstimates();
    if (shows || !own_.snapshot.estimates.empty()) session_.setEstimatesEnabled(shows);
}

void AppModel::show(HistorySnapshot snapshot) {
    history_ = std::move(snapshot);
    const auto& scope = selection_.scope().location;
    if (scope &&
        std::ranges::find(history_.locations, *scope, &TrackedLocation::id) == history_.locations.end())
        selection_.setScope({});  // it was forgotten
    Q_EMIT historyChanged();
    reloadDetails();
}

void AppModel::reloadDetails() {
    if (const auto shown = source())
        dayDetails_.load(shown, {.first = selection_.firstDay(),
                                 .last = selection_.day(),
                                 .contributorsFirst = selection_.rangeFirst(),
                                 .scope = selection_.scope(),
                                 .withEstimates = settings_.showsEstimates()});
    else
        dayDetails_.forget();
}

void AppModel::showExample() {
    if (isShuttingDown_) return;
    wantsExample_ = true;
    setWantsSetup(false);
    selection_.setScope({});
    setMode(PlainMode::example);
    background_.run(
        [make = makeExample_] {
            auto example = make();
            return std::pair(example, example->snapshot().get());
        },
        [this](std::pair<std::shared_ptr<HistorySource>, HistorySnapshot> made) {
            if (!isExampleShown()) return;
            example_ = std::move(made.first);
            show(std::move(made.second));
        },
        [this](const std::exception& error) { Q_EMIT noted(QString::fromStdString(error.what())); });
}

void AppModel::showOwnHistory() {
    if (!options_.trackingEnabled || isShuttingDown_) return;
    setWantsSetup(false);
    returnToOwnHistory();
}

void AppModel::showSetup() {
    if (!options_.trackingEnabled || isShuttingDown_) return;
    if (!isExampleShown() && mode_ != AppMode(PlainMode::tracking)) return;
    setWantsSetup(true);
    if (isExampleShown()) returnToOwnHistory();
}

void AppModel::leaveSetup() {
    setWantsSetup(false);
}

void AppModel::returnToOwnHistory() {
    wantsExample_ = false;
    example_.reset();
    retryOpening();
}

void AppModel::prepareExport() {
    const auto shown = source();
    if (!shown) return;
    exporter_.prepare({.source = shown,
                       .snapshot = history_,
                       .calendar = sessionParts_.clock.calendar(),
                       .records = session_.exportRecords()},
                      selection_.firstDay(), selection_.day(), selection_.scope());
}

void AppModel::checkNow() {
    if (!isShuttingDown_) session_.checkAll();
}

bool AppModel::canCheckNow() const {
    return mode_ == AppMode(PlainMode::tracking) && !isChecking() &&
           std::ranges::any_of(own_.records, [](const LocationRecord& record) { return !record.removedAt; });
}

void AppModel::setMiniWindowOpen(bool isOpen) {
    if (isMiniWindowOpen_ == isOpen || (isOpen && isShuttingDown_)) return;
    isMiniWindowOpen_ = isOpen;
    Q_EMIT miniWindowChanged();
}

void AppModel::setOpensAtLogin(bool opens) {
    loginItemFailure_.clear();
    try {
        if (opens)
            loginItem_->enable();
        else
            loginItem_->disable();
    } catch (const LoginItemError& error) {
        loginItemFailure_ =
            QString::fromStdString(filled(translated("Open at login couldn't be changed. {}"), error.what()));
    }
    refreshLoginItem();
}

void AppModel::refreshLoginItem() {
    loginItemStatus_ = loginItem_->status();
    Q_EMIT loginItemStatusChanged();
}

void AppModel::dayOrZoneChanged() {
    if (isShuttingDown_) return;
    session_.renewCalendar();
    selection_.setToday(today());
    if (isExampleShown())
        showExample();
    else if (session_.isOpen())
        session_.reloadFigures();
}

void AppModel::becameActive() {
    if (!isShuttingDown_ && session_.isOpen()) session_.refreshStatuses();
}

void AppModel::shutDown() {
    if (std::exchange(isShuttingDown_, true)) return;
    Q_EMIT shuttingDownChanged();
    schedule_.shutDown();
    setMiniWindowOpen(false);
    dayDetails_.forget();
    exporter_.stop();
    session_.stop();
}

}  // namespace brindle
