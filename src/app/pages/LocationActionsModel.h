#pragma once

#include "app/ListModel.h"
#include "app/Tracking.h"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

namespace brindle {

/// A drive that could be included.
struct DriveChoiceRow {
    DriveInfo drive;
    QString name;
    QString mountPath;
    QString size;    // empty when it cannot be told
    QString reason;  // why it cannot be included; empty when it can
    QString action;  // what its button does, for those who do not see where it stands

    bool operator==(const DriveChoiceRow&) const = default;
};

/// What the user changes about the tracked locations, one sheet after the other: everything is explained and
/// confirmed before it is stored. Of the example history nothing can be changed.
/// Thread: main.
class LocationActionsModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY offeredChanged)
    Q_PROPERTY(QString waitingText READ waitingText NOTIFY waitingChanged)
    Q_PROPERTY(Sheet sheet READ sheet NOTIFY sheetChanged)
    Q_PROPERTY(QString title READ title NOTIFY sheetChanged)
    Q_PROPERTY(QString text READ text NOTIFY sheetChanged)
    Q_PROPERTY(QString confirmTitle READ confirmTitle NOTIFY sheetChanged)
    Q_PROPERTY(QString dismissTitle READ dismissTitle NOTIFY sheetChanged)
    Q_PROPERTY(bool isDestructive READ isDestructive NOTIFY sheetChanged)
    Q_PROPERTY(QAbstractListModel* drives READ drives CONSTANT)

public:
    enum Sheet {
        NoSheet,
        ChoosingDrive,  // one of drives()
        Asking,         // whether what the sheet says is to be done
        Telling,        // that something cannot be done
    };
    Q_ENUM(Sheet)

    /// Both outlive it.
    LocationActionsModel(AppModel& model, Tracking& tracking, QObject* parent = nullptr);

    /// The locations that are shown are the user's own, on their page.
    [[nodiscard]] bool isOffered() const;
    /// What a change is waiting for, once that takes a while; else empty.
    [[nodiscard]] QString waitingText() const;

    [[nodiscard]] Sheet sheet() const { return sheet_; }
    [[nodiscard]] const QString& title() const { return words_.title; }
    [[nodiscard]] const QString& text() const { return words_.text; }
    /// Of the button that goes on; empty when there is none.
    [[nodiscard]] const QString& confirmTitle() const { return words_.confirmTitle; }
    [[nodiscard]] const QString& dismissTitle() const { return words_.dismissTitle; }
    /// Going on takes something away, and is not what Return does.
    [[nodiscard]] bool isDestructive() const { return words_.isDestructive; }
    [[nodiscard]] QAbstractListModel* drives() { return &drives_; }

    Q_INVOKABLE void addFolder();
    Q_INVOKABLE void addDrive();
    Q_INVOKABLE void includeDrive(int index);
    Q_INVOKABLE void chooseAgain(const QString& location);
    Q_INVOKABLE void stopTracking(const QString& location);
    Q_INVOKABLE void forget(const QString& location);

    /// What the sheet asks is to be done.
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void dismiss();

    /// The answer to folderRequested(): an absolute path.
    void takeFolder(const std::string& path);
    /// The drives that were looked for; nobody waits for them any more once their sheet is closed.
    void takeDrives(const std::vector<DriveChoice>& drives);

Q_SIGNALS:
    void offeredChanged();
    void waitingChanged();
    void sheetChanged();
    /// The user is to be asked for a folder.
    void folderRequested();

private:
    struct Words {
        QString title;
        QString text;
        QString confirmTitle;
        QString dismissTitle;
        bool isDestructive = false;
    };

    void take(const TrackingProposal& proposal);
    void store(const TrackingProposal& proposal);
    void refuse(const QString& sentence);
    void ask(Words words, std::function<void()> onConfirm);
    void show(Sheet sheet, Words words);
    void updateWaiting();
    [[nodiscard]] const LocationRecord* trackedRecord(const QString& location) const;

    AppModel& model_;
    Tracking& tracking_;
    Sheet sheet_ = NoSheet;
    Words words_;
    std::function<void()> onConfirm_;
    std::optional<LocationID> again_;  // whose folder is being chosen; none: a new one's
    enum class Proposing { nothing, folder, drive } proposing_ = Proposing::nothing;
    ListModel<DriveChoiceRow, std::string> drives_;
    QTimer patience_;
    bool isWaitingLong_ = false;
};

}  // namespace brindle
