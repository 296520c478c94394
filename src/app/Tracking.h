#pragma once

#include "app/AppModel.h"
#include "app/Background.h"
#include "checks/DriveChoices.h"
#include "checks/LocationChanges.h"

#include <QObject>
#include <QString>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace brindle {

/// A location as it would be stored, with what the user is to know before it is.
struct TrackingProposal {
    LocationRecord record;  // a new one, or a known one with its new place
    LocationOverlap overlap;
    QString explanation;     // in sentences; empty when there is nothing to tell
    bool isRefused = false;  // it cannot be stored: the explanation says why
    bool isKnown = false;    // a known location that was chosen again
};

/// Changes the list of tracked locations: of the user's own history, which has to be open. Nothing waits for
/// it on the main thread. Changes are made in the order in which they were asked for.
///
/// While a check runs: a location that is being checked leaves the check at once when it is chosen again,
/// taken away or forgotten; any other change is stored when the location that is being walked is done, which
/// can take minutes (see isChanging()). Nothing that was asked for is lost when the program quits meanwhile.
/// After the change the figures are loaded again. While the user's history is tracked and automatic checks
/// are not paused, a location that was included or chosen again is checked then, after the check in progress.
///
/// While another program checks the history nothing can be changed: that fails, with its sentence.
/// Thread: main.
class Tracking : public QObject {
    Q_OBJECT

public:
    /// Outlived by the model.
    explicit Tracking(AppModel& model, QObject* parent = nullptr);

    /// Waits for the changes that are being made.
    ~Tracking() override;

    /// Looks at a folder, or at a drive by its mount point; ends with proposed() or refused(), unless another
    /// call of the proposing ones has overtaken this one. Nothing is stored.
    void propose(const std::string& path);
    void proposeDrive(const DriveInfo& drive);
    /// Another folder for a location that is not found any more or may not be read.
    void proposeAgain(const LocationID& id, const std::string& path);

    /// Stores what was proposed; ends with changed() or failed().
    void include(const LocationRecord& record);
    void chooseAgain(const LocationRecord& record);
    /// What was recorded stays in the history. Ends with changed() or failed(), like the next.
    void stopTracking(const LocationID& id);
    /// Only a location that has never been checked.
    void forget(const LocationID& id);

    /// Looks for the mounted drives that are not included; ends with drivesFound() or refused().
    void findDrives();

    /// A change has been asked for and is not in the figures yet.
    [[nodiscard]] bool isChanging() const { return changing_ > 0; }

Q_SIGNALS:
    void proposed(const brindle::TrackingProposal& proposal);
    /// Why what was chosen cannot be looked at as a location, in a sentence for the user.
    void refused(const QString& sentence);
    void drivesFound(const std::vector<brindle::DriveChoice>& drives);
    void changingChanged();
    /// The locations are others, and the model's records and figures show it.
    void changed();
    /// A change could not be made: nothing is different. In sentences for the user.
    void failed(const QString& sentence);

private:
    using Proposing = std::function<LocationProposal(HistoryStore&)>;

    struct Change {
        const char* failure;  // with places for the location's name and for what went wrong
        LocationID id;
        std::string name;
        bool isCheckedNext = false;
        std::function<void(HistoryStore&)> apply;
    };

    void proposeWith(Proposing propose, bool isKnown);
    void change(Change change);
    void endChange();
    void checkNow();
    [[nodiscard]] std::string nameOf(const LocationID& id) const;

    AppModel& model_;
    int proposals_ = 0;               // asked for so far
    int changing_ = 0;                // changes that the figures do not show yet
    int stored_ = 0;                  // of these, those that are made
    std::set<LocationID> unchecked_;  // to be checked once no check is running
    Background looking_;
    Background changes_;  // one after the other; last, so that it ends first
};

}  // namespace brindle
