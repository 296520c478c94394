#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QStringList>
#include <optional>
#include <vector>

namespace brindle {

/// What the pages can cover, as a list to choose from: all locations, then each tracked one. A chosen
/// location that is tracked no longer stays in the list for as long as it is chosen.
/// Thread: main.
class ScopeModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList options READ options NOTIFY optionsChanged)
    Q_PROPERTY(int currentIndex READ currentIndex NOTIFY currentIndexChanged)
    Q_PROPERTY(bool hasChoice READ hasChoice NOTIFY optionsChanged)

public:
    explicit ScopeModel(AppModel& model, QObject* parent = nullptr);

    /// "All locations", then names; equal ones are followed by their paths.
    [[nodiscard]] const QStringList& options() const { return options_; }
    [[nodiscard]] int currentIndex() const { return currentIndex_; }
    /// Whether there are two locations or more.
    [[nodiscard]] bool hasChoice() const { return locations_.size() > 1; }

    /// An index that is not in the list changes nothing.
    Q_INVOKABLE void choose(int index);

Q_SIGNALS:
    void optionsChanged();
    void currentIndexChanged();

private:
    void update();

    AppModel& model_;
    std::vector<LocationID> locations_;  // in the order of the options, behind "All locations"
    QStringList options_;
    int currentIndex_ = 0;
};

}  // namespace brindle
