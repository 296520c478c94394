#include "app/pages/MiniWindowModel.h"

#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {

MiniWindowModel::MiniWindowModel(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    for (const auto signal : {&AppModel::modeChanged, &AppModel::historyChanged, &AppModel::ownTodayChanged,
                              &AppModel::checkingChanged})
        connect(&model, signal, this, &MiniWindowModel::changed);
    connect(model.settings(), &Settings::checksPausedChanged, this, &MiniWindowModel::changed);
    connect(model.settings(), &Settings::miniWindowKeepsOnTopChanged, this,
            &MiniWindowModel::keepsOnTopChanged);
}

OwnToday MiniWindowModel::today() const {
    return isExample() ? ownTodayOf(model_.history()) : model_.ownToday();
}

bool MiniWindowModel::hasFigures() const {
    return message().isEmpty() && today().isChecked;
}

QString MiniWindowModel::added() const {
    return QString::fromStdString(signedByteAmount(today().totals.added));
}

QString MiniWindowModel::addedExact() const {
    return QString::fromStdString(exactByteAmount(today().totals.added));
}

QString MiniWindowModel::freed() const {
    return QString::fromStdString(signedByteAmount(-today().totals.freed));
}

QString MiniWindowModel::freedExact() const {
    return QString::fromStdString(exactByteAmount(-today().totals.freed));
}

QString MiniWindowModel::message() const {
    const auto* plain = std::get_if<PlainMode>(&model_.mode());
    if (plain == nullptr) return translated("Your storage history couldn't be opened.");
    switch (*plain) {
        case PlainMode::starting:  // for a moment, and what follows is not known
            return {};
        case PlainMode::onboarding:
        case PlainMode::setup:
            return translated("Set up Brindle to see your storage.");
        case PlainMode::example:
        case PlainMode::tracking:
            break;
    }
    return today().isChecked ? QString() : translated("No check recorded for this date.");
}

QString MiniWindowModel::status() const {
    if (const auto& activity = model_.checking()) {
        if (activity->isEstimating) return translated("Estimating earlier history…");
        return pageText(translated("Checking {}…"), fileNameText(activity->locationName));
    }
    if (model_.settings()->checksPaused()) return translated("Checks paused.");
    const auto latest = today().lastCheck;
    if (!latest) return translated("Not checked yet");
    return pageText(translated("Last checked {}"), model_.calendar().timeLabel(*latest));
}

QString MiniWindowModel::keepsOnTopHelp() const {
    return keepsOnTop() ? translated("Stop keeping on top") : translated("Keep on top of other windows");
}

void MiniWindowModel::toggleKeepsOnTop() {
    model_.settings()->setMiniWindowKeepsOnTop(!keepsOnTop());
}

}  // namespace brindle
