#include "app/pages/FirstCheckModel.h"

#include "app/pages/PageText.h"
#include "checks/Obstacle.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace brindle {

QString durationText(std::int64_t seconds) {
    const auto text = [](const char* form, std::int64_t large, std::int64_t small) {
        return pageText(form, groupedNumber(large), groupedNumber(small));
    };
    if (seconds < 60) return pageText(translated("{} s"), groupedNumber(seconds));
    if (seconds < 3600) return text(translated("{0} min {1} s"), seconds / 60, seconds % 60);
    return text(translated("{0} h {1} min"), seconds / 3600, seconds / 60 % 60);
}

FirstCheckModel::FirstCheckModel(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    everySecond_.setInterval(std::chrono::seconds(1));
    connect(&everySecond_, &QTimer::timeout, this, &FirstCheckModel::progressed);
    connect(&model, &AppModel::checkingChanged, this, &FirstCheckModel::takeActivity);
    connect(&model, &AppModel::lastRunChanged, this, [this] {
        isAsked_ = false;
        areFiguresDue_ = true;
    });
    connect(&model, &AppModel::recordsChanged, this, &FirstCheckModel::takeFigures);
    // Without the history's answer no run begins, and of one that is over no figures come.
    connect(&model.session(), &HistorySession::troubled, this, [this] {
        isAsked_ = areFiguresDue_ = false;
        takeFigures();
    });
}

FirstCheckModel::State FirstCheckModel::state() const {
    if (isAsked_ || areFiguresDue_ || model_.isChecking()) return Running;
    if (!model_.lastRun()) return Ready;
    if (model_.lastRun()->cancelled) return Stopped;
    return obstacles().isEmpty() ? Ready : Failed;
}

QString FirstCheckModel::title() const {
    switch (state()) {
        case Ready:
            return translated("Ready for the first check");
        case Running:
            return translated("The first check");
        case Stopped:
            return translated("The first check was stopped");
        case Failed:
            break;
    }
    return translated("The first check couldn't be finished");
}

QString FirstCheckModel::explanation() const {
    switch (state()) {
        case Ready:
        case Running:
            return translated(
                "It finds out how much is there now, which takes longer than any check after it. From then "
                "on Brindle records what was added, grew, shrank or went away.");
        case Stopped:
            return hasBaseline()
                       ? translated(
                             "What had been checked before is recorded. The rest can be checked again.")
                       : translated("Nothing was recorded. It can be started again at any time.");
        case Failed:
            break;
    }
    return translated("Nothing was recorded, and nothing on your drives was changed.");
}

QStringList FirstCheckModel::obstacles() const {
    QStringList sentences;
    if (!model_.lastRun()) return sentences;
    if (model_.lastRun()->refused) sentences += QString::fromStdString(*model_.lastRun()->refused);
    for (const LocationRecord& record : model_.records())
        if (const auto sentence = obstacleText(*model_.lastRun(), record); sentence && !record.removedAt)
            sentences += QString::fromStdString(*sentence);
    return sentences;
}

bool FirstCheckModel::hasBaseline() const {
    return std::ranges::any_of(model_.records(),
                               [](const LocationRecord& record) { return record.baselineAt.has_value(); });
}

QString FirstCheckModel::activity() const {
    if (!model_.checking()) return translated("Checking your files…");
    if (model_.checking()->isEstimating) return model_.checkingText();
    return pageText(translated("Checking your files… {}"), fileNameText(model_.checking()->locationName));
}

QString FirstCheckModel::files() const {
    return QString::fromStdString(groupedNumber(model_.checking() ? model_.checking()->filesSeen : 0));
}

QString FirstCheckModel::bytes() const {
    return QString::fromStdString(byteAmount(model_.checking() ? model_.checking()->bytesSeen : 0));
}

QString FirstCheckModel::exactBytes() const {
    return QString::fromStdString(exactByteAmount(model_.checking() ? model_.checking()->bytesSeen : 0));
}

QString FirstCheckModel::rate() const {
    const auto& checking = model_.checking();
    const bool isKnown = checking && checking->elapsed > 0;
    const auto perSecond =
        isKnown ? std::llround(static_cast<double>(checking->filesSeen) / checking->elapsed) : 0;
    return QString::fromStdString(groupedNumber(perSecond));
}

QString FirstCheckModel::time() const {
    return durationText(sinceBegin_.isValid() ? sinceBegin_.elapsed() / 1000 : 0);
}

void FirstCheckModel::begin() {
    if (isRunning()) return;
    isAsked_ = true;
    isStopAsked_ = false;
    sinceBegin_.start();
    everySecond_.start();
    Q_EMIT changed();
    Q_EMIT progressed();
    model_.checkNow();
}

void FirstCheckModel::stop() {
    isStopAsked_ = isAsked_;
    model_.stopCheck();
}

void FirstCheckModel::takeActivity() {
    if (model_.isChecking()) {
        if (!everySecond_.isActive() && model_.isSetupShown()) {
            sinceBegin_.start();
            everySecond_.start();
        }
        isAsked_ = false;
        if (std::exchange(isStopAsked_, false)) model_.stopCheck();
    }
    Q_EMIT changed();
    Q_EMIT progressed();
}

void FirstCheckModel::takeFigures() {
    const bool isOver = std::exchange(areFiguresDue_, false);
    if (!isRunning()) everySecond_.stop();
    Q_EMIT changed();
    if (isOver && hasBaseline() && !model_.lastRun()->cancelled) Q_EMIT baselineSet();
}

}  // namespace brindle
