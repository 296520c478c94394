#pragma once

#include "app/AppModel.h"
#include "app/LatestAnswer.h"
#include "app/ListModel.h"
#include "app/PageLists.h"
#include "app/pages/OverviewReading.h"
#include "app/pages/OverviewStatement.h"
#include "app/pages/ScopeModel.h"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>

namespace brindle {

/// One of the last seven days.
struct WeekDayRow {
    LocalDay day;
    QString label;          // "Sat"
    QString state;          // "recorded", "partial", "estimated" or "noCheck"
    double addedShare = 0;  // of the largest amount of the week, 0 to 1
    double freedShare = 0;
    QString accessibleText;  // the day with its figures, or why it has none

    bool operator==(const WeekDayRow&) const = default;
};

/// The used space of a drive.
struct DriveUseRow {
    std::string id;
    QString name;
    QString used;       // "715.8 GB of 994.7 GB used"
    QString available;  // "278.9 GB available"
    double share = 0;   // 0 to 1

    bool operator==(const DriveUseRow&) const = default;
};

/// The Overview: today and the last seven days of what the selection covers. Every figure leads to the
/// changes behind it.
/// Thread: main.
class OverviewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(brindle::ScopeModel* scopes READ scopes CONSTANT)
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(QString stateSentence READ stateSentence NOTIFY changed)
    Q_PROPERTY(QString day READ day NOTIFY changed)
    Q_PROPERTY(int netDirection READ netDirection NOTIFY changed)
    Q_PROPERTY(QString net READ net NOTIFY changed)
    Q_PROPERTY(QString netExact READ netExact NOTIFY changed)
    Q_PROPERTY(QString added READ added NOTIFY changed)
    Q_PROPERTY(QString addedExact READ addedExact NOTIFY changed)
    Q_PROPERTY(QString freed READ freed NOTIFY changed)
    Q_PROPERTY(QString freedExact READ freedExact NOTIFY changed)
    Q_PROPERTY(QString files READ files NOTIFY changed)
    Q_PROPERTY(QString partial READ partial NOTIFY changed)
    Q_PROPERTY(QString lastCheck READ lastCheck NOTIFY changed)
    Q_PROPERTY(QString sentence READ sentence NOTIFY readingChanged)
    Q_PROPERTY(QStringList troubles READ troubles NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* week READ week CONSTANT)
    Q_PROPERTY(QString weekAdded READ weekAdded NOTIFY changed)
    Q_PROPERTY(QString weekAddedExact READ weekAddedExact NOTIFY changed)
    Q_PROPERTY(QString weekFreed READ weekFreed NOTIFY changed)
    Q_PROPERTY(QString weekFreedExact READ weekFreedExact NOTIFY changed)
    Q_PROPERTY(QString weekCoverage READ weekCoverage NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* contributors READ contributors CONSTANT)
    Q_PROPERTY(QString contributorsSentence READ contributorsSentence NOTIFY readingChanged)
    Q_PROPERTY(QAbstractListModel* drives READ drives CONSTANT)
    Q_PROPERTY(QString estimates READ estimates NOTIFY changed)

public:
    enum State {
        NothingYet,  // nothing that is covered was ever checked
        FirstCheck,  // nothing was, and a check is running
        Recorded,
        Estimated,
        NoCheck,
    };
    Q_ENUM(State)

    explicit OverviewModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] ScopeModel* scopes() { return &scopes_; }
    [[nodiscard]] State state() const;
    /// In the place of figures, where there are none; else empty.
    [[nodiscard]] QString stateSentence() const;
    [[nodiscard]] const QString& day() const { return statement_.day; }
    /// -1, 0 or 1.
    [[nodiscard]] int netDirection() const { return statement_.netDirection; }
    [[nodiscard]] const QString& net() const { return statement_.net; }
    [[nodiscard]] const QString& netExact() const { return statement_.netExact; }
    [[nodiscard]] const QString& added() const { return statement_.added; }
    [[nodiscard]] const QString& addedExact() const { return statement_.addedExact; }
    [[nodiscard]] const QString& freed() const { return statement_.freed; }
    [[nodiscard]] const QString& freedExact() const { return statement_.freedExact; }
    [[nodiscard]] const QString& files() const { return statement_.files; }
    /// Why the day is partial; empty when it is not.
    [[nodiscard]] const QString& partial() const { return statement_.partial; }
    [[nodiscard]] const QString& lastCheck() const { return statement_.lastCheck; }
    /// Where today's change lies; empty until it is read.
    [[nodiscard]] const QString& sentence() const { return sentence_; }
    /// The locations that cannot be checked now, a sentence each.
    [[nodiscard]] const QStringList& troubles() const { return statement_.troubles; }

    [[nodiscard]] QAbstractListModel* week() { return &week_; }
    [[nodiscard]] const QString& weekAdded() const { return statement_.weekAdded; }
    [[nodiscard]] const QString& weekAddedExact() const { return statement_.weekAddedExact; }
    [[nodiscard]] const QString& weekFreed() const { return statement_.weekFreed; }
    [[nodiscard]] const QString& weekFreedExact() const { return statement_.weekFreedExact; }
    [[nodiscard]] const QString& weekCoverage() const { return statement_.weekCoverage; }
    /// The folders with the largest changes of the week, as AppModel::contributors().
    [[nodiscard]] FolderList* contributors() { return contributors_.get(); }
    /// In the place of the folders, when there are none; empty until that is known.
    [[nodiscard]] const QString& contributorsSentence() const { return contributorsSentence_; }
    /// The drives of the locations that are covered.
    [[nodiscard]] QAbstractListModel* drives() { return &drives_; }
    /// One line on estimates; empty when none are shown.
    [[nodiscard]] const QString& estimates() const { return estimates_; }

    // Each goes to the Activity page, with the changes behind a figure.
    Q_INVOKABLE void openToday() { openChanges(today(), today(), DirectionFilter::all); }
    Q_INVOKABLE void openTodayAdded() { openChanges(today(), today(), DirectionFilter::added); }
    Q_INVOKABLE void openTodayFreed() { openChanges(today(), today(), DirectionFilter::freed); }
    Q_INVOKABLE void openWeek() { openChanges(weekFirst(), today(), DirectionFilter::all); }
    Q_INVOKABLE void openWeekAdded() { openChanges(weekFirst(), today(), DirectionFilter::added); }
    Q_INVOKABLE void openWeekFreed() { openChanges(weekFirst(), today(), DirectionFilter::freed); }
    Q_INVOKABLE void openDay(int index);
    Q_INVOKABLE void openFolder(int index);
    Q_INVOKABLE void openEstimates();
    /// Goes to the page of drives and folders.
    Q_INVOKABLE void openDrives();
    /// Checks everything that is included.
    Q_INVOKABLE void checkNow() { model_.checkNow(); }

Q_SIGNALS:
    void changed();
    void readingChanged();

private:
    /// What the reading is of: one of something else is not shown for as long as it takes to read anew.
    struct Subject {
        bool isExample = false;
        LocalDay today;
        LocationScope scope;

        bool operator==(const Subject&) const = default;
    };

    [[nodiscard]] const LocalDay& today() const { return model_.history().today; }
    [[nodiscard]] LocalDay weekFirst() const;
    void update();
    void read();
    void take(const OverviewReading& reading);
    void openChanges(const LocalDay& first, const LocalDay& last, DirectionFilter direction,
                     std::optional<FolderRef> folder = {});

    AppModel& model_;
    ScopeModel scopes_;
    OverviewStatement statement_;
    QString estimates_;
    QString sentence_;
    QString contributorsSentence_;
    ListModel<WeekDayRow, LocalDay> week_;
    ListModel<DriveUseRow, std::string> drives_;
    std::unique_ptr<FolderList> contributors_ = makeFolderList();
    std::optional<Subject> subject_;         // of the reading that is shown or awaited
    LatestAnswer<OverviewReading> reading_;  // last, so that it ends first
};

}  // namespace brindle
