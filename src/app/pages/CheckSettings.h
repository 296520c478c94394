#pragma once

#include "app/AppModel.h"
#include "app/ListModel.h"
#include "app/PageLists.h"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <string>

namespace brindle {

/// A location as the settings list it.
struct IncludedLocationRow {
    LocationRow location;
    std::string folder;
    bool isTroubled = false;  // it cannot be checked now
    bool canShow = false;     // there is a folder to show in the file manager

    bool operator==(const IncludedLocationRow&) const = default;
};

/// The settings of the storage checks: when they come, what they see, whether they estimate, and what they
/// tell of. What is included is the user's own, also while the example is shown.
/// Thread: main.
class CheckSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool checksAutomatically READ checksAutomatically WRITE setChecksAutomatically NOTIFY changed)
    Q_PROPERTY(QStringList intervals READ intervals CONSTANT)
    Q_PROPERTY(int interval READ interval WRITE setInterval NOTIFY changed)
    Q_PROPERTY(QString scheduleText READ scheduleText CONSTANT)
    Q_PROPERTY(QAbstractListModel* locations READ locations CONSTANT)
    Q_PROPERTY(bool hasLocations READ hasLocations NOTIFY locationsChanged)
    Q_PROPERTY(QString locationsText READ locationsText NOTIFY locationsChanged)
    Q_PROPERTY(bool showsEstimates READ showsEstimates WRITE setShowsEstimates NOTIFY changed)
    Q_PROPERTY(QString estimatesText READ estimatesText CONSTANT)
    Q_PROPERTY(bool notifiesAboutGrowth READ notifiesAboutGrowth WRITE setNotifiesAboutGrowth NOTIFY changed)
    Q_PROPERTY(QString noticesText READ noticesText CONSTANT)

public:
    explicit CheckSettings(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] bool checksAutomatically() const { return !model_.settings()->checksPaused(); }
    void setChecksAutomatically(bool checks) { model_.settings()->setChecksPaused(!checks); }
    [[nodiscard]] QStringList intervals() const;
    /// The place of the interval in intervals().
    [[nodiscard]] int interval() const;
    void setInterval(int index);
    [[nodiscard]] QString scheduleText() const;

    [[nodiscard]] QAbstractListModel* locations() { return &locations_; }
    [[nodiscard]] bool hasLocations() const { return locations_.rowCount() > 0; }
    /// What stands in the place of the list while there is none; empty while the history is read.
    [[nodiscard]] QString locationsText() const;
    Q_INVOKABLE void showInFiles(int index);

    [[nodiscard]] bool showsEstimates() const { return model_.settings()->showsEstimates(); }
    void setShowsEstimates(bool shows) { model_.settings()->setShowsEstimates(shows); }
    [[nodiscard]] static QString estimatesText();

    [[nodiscard]] bool notifiesAboutGrowth() const { return model_.settings()->notifiesAboutGrowth(); }
    void setNotifiesAboutGrowth(bool notifies) { model_.settings()->setNotifiesAboutGrowth(notifies); }
    [[nodiscard]] static QString noticesText();

Q_SIGNALS:
    void changed();
    void locationsChanged();
    /// A folder is to be shown in the file manager.
    void revealRequested(const std::string& path);

private:
    void updateLocations();

    AppModel& model_;
    ListModel<IncludedLocationRow, std::string> locations_;
};

}  // namespace brindle
