#pragma once

#include "app/AppModel.h"
#include "app/LatestAnswer.h"
#include "app/ListModel.h"
#include "app/PageLists.h"
#include "app/pages/DriveOutlook.h"
#include "app/pages/LocationActionsModel.h"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <map>
#include <string>

namespace brindle {

/// A drive with what is known of its space.
struct DriveSpaceRow {
    DriveRow drive;
    QString used;          // "715.8 GB"
    QString usedExact;     // to the byte
    QString measured;      // when: "Measured Mar 7, 2026, 2:05 PM"
    QVariantList parts;    // of the used space, see spaceParts()
    QStringList notes;     // on its future, and on space that may surprise
    DriveOutlook outlook;  // empty until it is read

    bool operator==(const DriveSpaceRow&) const = default;
};

/// A tracked location with what can be done with it.
struct LocationDetailRow {
    LocationRow location;
    QString sizeExact;
    QString driveName;            // empty where it is not known
    QString cloudOnly;            // the line about files that are elsewhere; empty where there are none
    bool isTroubled = false;      // it cannot be checked now
    bool canShow = false;         // there is a folder to show in the file manager
    bool canChooseAgain = false;  // it is not found, or may not be read
    bool canStop = false;         // what was recorded of it would stay
    bool canForget = false;       // nothing was recorded of it yet
    bool isOpen = false;          // the folders that could not be read are shown

    bool operator==(const LocationDetailRow&) const = default;
};

/// A folder that the last check of a location could not read.
struct UnreadableRow {
    std::string relativePath;
    QString path;
    QString reason;

    bool operator==(const UnreadableRow&) const = default;
};

/// The page of drives and folders.
/// Thread: main.
class DrivesModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractListModel* drives READ drives CONSTANT)
    Q_PROPERTY(QAbstractListModel* locations READ locations CONSTANT)
    Q_PROPERTY(bool hasLocations READ hasLocations NOTIFY changed)
    Q_PROPERTY(QString emptySentence READ emptySentence CONSTANT)
    Q_PROPERTY(brindle::LocationActionsModel* actions READ actions CONSTANT)
    Q_PROPERTY(QAbstractListModel* unreadable READ unreadable CONSTANT)
    Q_PROPERTY(QString moreUnreadable READ moreUnreadable NOTIFY changed)

public:
    /// Both outlive it.
    DrivesModel(AppModel& model, Tracking& tracking, QObject* parent = nullptr);

    [[nodiscard]] QAbstractListModel* drives() { return &drives_; }
    [[nodiscard]] QAbstractListModel* locations() { return &locations_; }
    [[nodiscard]] bool hasLocations() const { return locations_.rowCount() > 0; }
    [[nodiscard]] QString emptySentence() const;
    [[nodiscard]] LocationActionsModel* actions() { return &actions_; }
    /// Of the location whose list is open: the first ones, by path.
    [[nodiscard]] QAbstractListModel* unreadable() { return &unreadable_; }
    /// How many more there are; empty when all are shown.
    [[nodiscard]] const QString& moreUnreadable() const { return moreUnreadable_; }

    /// Opens the list of what could not be read in the location, in the place of another's, or closes it.
    Q_INVOKABLE void toggleUnreadable(int index);
    Q_INVOKABLE void showInFiles(int index);

Q_SIGNALS:
    void changed();
    /// A folder or file is to be shown in the file manager.
    void revealRequested(const std::string& path);

private:
    void update();
    void showDrives();
    void showLocations();
    void showUnreadable();
    void readOutlooks();

    AppModel& model_;
    LocationActionsModel actions_;
    ListModel<DriveSpaceRow, std::string> drives_;
    ListModel<LocationDetailRow, std::string> locations_;
    ListModel<UnreadableRow, std::string> unreadable_;
    std::string openLocation_;  // its id; empty when no list is open
    QString moreUnreadable_;
    std::map<std::string, DriveOutlook> outlooks_;
    LatestAnswer<std::map<std::string, DriveOutlook>> reading_;  // last, so that it ends first
};

}  // namespace brindle
