#pragma once

#include "app/AppModel.h"
#include "app/ListModel.h"
#include "app/Tracking.h"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// A location that is included.
struct ChosenRow {
    LocationID id;
    QString name;
    QString detail;    // where it is
    QString obstacle;  // what is wrong with it; empty when nothing is
    bool isDrive = false;
    bool canTakeOut = false;

    bool operator==(const ChosenRow&) const = default;
};

/// A folder or drive that may be worth including.
struct SuggestionRow {
    std::string path;
    QString name;
    QString detail;                  // where it is, and what speaks for it
    QString obstacle;                // why it cannot be included; empty when it can
    std::optional<DriveInfo> drive;  // nothing for a folder

    bool operator==(const SuggestionRow&) const = default;
};

/// Choosing folders and drives for the first time. What is chosen is stored at once.
/// Thread: main.
class LocationChoice : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractListModel* chosen READ chosen CONSTANT)
    Q_PROPERTY(QAbstractListModel* suggestions READ suggestions CONSTANT)
    Q_PROPERTY(bool hasChosen READ hasChosen NOTIFY changed)
    Q_PROPERTY(bool hasSuggestions READ hasSuggestions NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString question READ question NOTIFY changed)
    Q_PROPERTY(QString questionTitle READ questionTitle NOTIFY changed)

public:
    /// Both outlive it. `home`: the folder that is suggested first; empty when there is none.
    LocationChoice(AppModel& model, Tracking& tracking, std::string home, QObject* parent = nullptr);

    [[nodiscard]] QAbstractListModel* chosen() { return &chosen_; }
    [[nodiscard]] QAbstractListModel* suggestions() { return &suggestions_; }
    [[nodiscard]] bool hasChosen() const { return chosen_.rowCount() > 0; }
    [[nodiscard]] bool hasSuggestions() const { return suggestions_.rowCount() > 0; }
    /// What came of the last choice, or why it is not done yet; empty when there is nothing to tell.
    [[nodiscard]] QString message() const;
    /// What is to be known before the choice is stored; empty when nothing is asked.
    [[nodiscard]] QString question() const { return asked_ ? asked_->explanation : QString(); }
    [[nodiscard]] QString questionTitle() const;

    /// The choice is shown anew: looks for the drives again.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void includeSuggestion(int index);
    /// Lets the user choose a folder, with folderRequested().
    Q_INVOKABLE void chooseFolder() { Q_EMIT folderRequested(); }
    void include(const std::string& path);
    Q_INVOKABLE void takeOut(int index);
    /// To question().
    Q_INVOKABLE void answer(bool includes);

Q_SIGNALS:
    void changed();
    void folderRequested();

private:
    void update();
    void take(const TrackingProposal& proposal);
    void tell(const QString& message);
    [[nodiscard]] bool isIncluded(const std::string& path) const;
    void showChosen();
    void showSuggestions();

    AppModel& model_;
    Tracking& tracking_;
    std::string home_;
    ListModel<ChosenRow, LocationID> chosen_;
    ListModel<SuggestionRow, std::string> suggestions_;
    std::vector<DriveChoice> drives_;
    QString message_;
    std::optional<TrackingProposal> asked_;  // what question() is about
    bool isLooking_ = false;                 // at a choice that was made here
};

}  // namespace brindle
