#pragma once

#include "app/AppModel.h"
#include "app/pages/FirstCheckModel.h"
#include "app/pages/LocationChoice.h"
#include "platform/Paths.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>

namespace brindle {

/// The way from the first start to the pages, phase by phase. Which phase is next follows from what is
/// stored, so that it can be left in any of them and taken up again.
///
/// Where there are pages already, the way ends before the first check: what is included is checked anyhow.
/// Thread: main.
class SetupModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(Phase phase READ phase NOTIFY changed)
    Q_PROPERTY(int step READ step NOTIFY changed)
    Q_PROPERTY(int stepCount READ stepCount NOTIFY changed)
    Q_PROPERTY(QString stepText READ stepText NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY changed)
    Q_PROPERTY(bool canGoOn READ canGoOn NOTIFY changed)
    Q_PROPERTY(QString goOnTitle READ goOnTitle NOTIFY changed)
    Q_PROPERTY(bool hasPages READ hasPages NOTIFY changed)
    Q_PROPERTY(bool canShowPages READ canShowPages NOTIFY changed)
    Q_PROPERTY(QString staysHere READ staysHere CONSTANT)
    Q_PROPERTY(QString estimatesText READ estimatesText CONSTANT)
    Q_PROPERTY(bool showsEstimates READ showsEstimates WRITE setShowsEstimates NOTIFY estimatesChanged)
    Q_PROPERTY(brindle::LocationChoice* locations READ locations CONSTANT)
    Q_PROPERTY(brindle::FirstCheckModel* check READ check CONSTANT)

public:
    enum Phase { Welcome, Locations, Startup, FirstCheck };
    Q_ENUM(Phase)

    /// Both outlive it. `home`: the folder that is suggested first; empty when there is none.
    SetupModel(AppModel& model, Tracking& tracking, std::string home = homeFolder(),
               QObject* parent = nullptr);

    [[nodiscard]] Phase phase() const;
    /// From 1 to stepCount().
    [[nodiscard]] int step() const { return phase() + 1; }
    [[nodiscard]] int stepCount() const;
    [[nodiscard]] QString stepText() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString explanation() const;
    /// What came of the last thing that the user did here; empty when there is nothing to tell.
    [[nodiscard]] QString message() const { return phase() == Locations ? locations_.message() : QString(); }
    [[nodiscard]] bool canGoBack() const;
    [[nodiscard]] bool canGoOn() const;
    [[nodiscard]] QString goOnTitle() const;
    /// There is something to show already: the user came here from the pages, and can go back to them.
    [[nodiscard]] bool hasPages() const { return model_.mode() == AppMode(PlainMode::tracking); }
    /// A first check was stopped that had set a baseline before.
    [[nodiscard]] bool canShowPages() const;

    [[nodiscard]] QString staysHere() const;
    [[nodiscard]] QString estimatesText() const;
    [[nodiscard]] bool showsEstimates() const { return model_.settings()->showsEstimates(); }
    void setShowsEstimates(bool shows) { model_.settings()->setShowsEstimates(shows); }

    [[nodiscard]] LocationChoice* locations() { return &locations_; }
    [[nodiscard]] FirstCheckModel* check() { return &check_; }

    /// To the next phase: behind the last choices to the first check, which begins, or to the pages.
    Q_INVOKABLE void goOn();
    Q_INVOKABLE void goBack();
    Q_INVOKABLE void showExample() { model_.showExample(); }
    /// To the pages, with nothing changed by it.
    Q_INVOKABLE void showPages();

Q_SIGNALS:
    void changed();
    void estimatesChanged();

private:
    void takeMode();
    void finish();
    void showResult();

    AppModel& model_;
    LocationChoice locations_;
    FirstCheckModel check_;
    std::optional<Phase> chosen_;  // by the user, until the screens are left
};

}  // namespace brindle
