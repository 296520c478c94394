#include "app/pages/SetupModel.h"

#include "app/pages/CheckSettings.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

#include <algorithm>
#include <utility>

namespace brindle {

SetupModel::SetupModel(AppModel& model, Tracking& tracking, std::string home, QObject* parent)
    : QObject(parent), model_(model), locations_(model, tracking, std::move(home)), check_(model) {
    connect(&model, &AppModel::modeChanged, this, &SetupModel::takeMode);
    connect(&model, &AppModel::setupShownChanged, this, &SetupModel::takeMode);
    connect(&locations_, &LocationChoice::changed, this, &SetupModel::changed);
    connect(&check_, &FirstCheckModel::changed, this, &SetupModel::changed);
    connect(&check_, &FirstCheckModel::baselineSet, this, &SetupModel::showResult);
    connect(model.settings(), &Settings::showsEstimatesChanged, this, &SetupModel::estimatesChanged);
}

SetupModel::Phase SetupModel::phase() const {
    if (chosen_ && (locations_.hasChosen() || *chosen_ <= Locations)) return *chosen_;
    if (hasPages()) return Welcome;
    const bool isCompleted = model_.settings()->startupSetupCompleted();
    if (!locations_.hasChosen()) return isCompleted ? Locations : Welcome;
    return isCompleted ? FirstCheck : Startup;
}

int SetupModel::stepCount() const {
    return check_.hasBaseline() && phase() != FirstCheck ? 3 : 4;
}

QString SetupModel::stepText() const {
    return pageText(translated("Step {0} of {1}"), groupedNumber(step()), groupedNumber(stepCount()));
}

QString SetupModel::title() const {
    switch (phase()) {
        case Welcome:
            return translated("A private, local statement of where your storage went.");
        case Locations:
            return translated("Choose folders and drives");
        case Startup:
            return translated("Earlier history and start-up");
        case FirstCheck:
            break;
    }
    return check_.title();
}

QString SetupModel::explanation() const {
    switch (phase()) {
        case Welcome:
            return translated(
                "Brindle looks at your folders and drives again and again, and keeps a record of what was "
                "added, grew, shrank or went away.");
        case Locations:
            return translated(
                "Brindle checks everything that is in them. You can add others and stop tracking these at "
                "any "
                "time.");
        case Startup:
            return translated("Every choice can be changed later in the settings.");
        case FirstCheck:
            break;
    }
    return check_.explanation();
}

bool SetupModel::canGoBack() const {
    return phase() != Welcome && !(phase() == FirstCheck && check_.isRunning());
}

bool SetupModel::canGoOn() const {
    return phase() == Welcome || (locations_.hasChosen() && !(phase() == FirstCheck && check_.isRunning()));
}

QString SetupModel::goOnTitle() const {
    switch (phase()) {
        case Welcome:
            return translated("Get started");
        case Locations:
            return translated("Continue");
        case Startup:
            return check_.hasBaseline() ? translated("Done") : translated("Start the first check");
        case FirstCheck:
            break;
    }
    return check_.state() == FirstCheckModel::Ready ? translated("Start the first check")
                                                    : translated("Check again");
}

bool SetupModel::canShowPages() const {
    return phase() == FirstCheck && check_.hasBaseline() && !check_.isRunning();
}

QString SetupModel::staysHere() const {
    return translated(platformText::staysHere);
}

QString SetupModel::estimatesText() const {
    return CheckSettings::estimatesText();
}

void SetupModel::goOn() {
    if (!canGoOn()) return;
    switch (phase()) {
        case Welcome:
            chosen_ = Locations;
            locations_.refresh();
            break;
        case Locations:
            chosen_ = Startup;
            break;
        case Startup:
            return finish();
        case FirstCheck:
            return check_.begin();
    }
    Q_EMIT changed();
}

void SetupModel::goBack() {
    if (!canGoBack()) return;
    chosen_ = static_cast<Phase>(phase() - 1);
    if (chosen_ == Locations) locations_.refresh();
    Q_EMIT changed();
}

void SetupModel::showPages() {
    hasPages() ? model_.leaveSetup() : showResult();
}

void SetupModel::finish() {
    chosen_.reset();
    model_.settings()->setStartupSetupCompleted(true);
    if (check_.hasBaseline()) model_.selection()->setDestination(Destination::overview);
    model_.route();
    if (model_.mode() == AppMode(PlainMode::setup)) check_.begin();
    Q_EMIT changed();
}

void SetupModel::takeMode() {
    if (!model_.isSetupShown()) {
        // The example is a digression: who comes back from it goes on where it began.
        if (hasPages()) chosen_.reset();
    } else if (phase() == Locations) {
        locations_.refresh();
    } else if (phase() == FirstCheck && !model_.lastRun() && !model_.settings()->checksPaused()) {
        // A first check that the program's end cut short goes on with the program, as later ones do.
        check_.begin();
    }
    Q_EMIT changed();
}

void SetupModel::showResult() {
    if (model_.mode() != AppMode(PlainMode::setup)) return;
    QStringList notes = check_.obstacles();
    const bool isRefused = std::ranges::any_of(model_.ownFigures().unreadable, [](const auto& folders) {
        return std::ranges::any_of(folders.second, &UnreadableFolder::isPermission);
    });
    if (isRefused) notes += translated(platformText::someUnreadable);
    model_.selection()->setDestination(Destination::overview);
    model_.route();
    if (!notes.isEmpty()) Q_EMIT model_.noted(notes.join(' '));
}

}  // namespace brindle
