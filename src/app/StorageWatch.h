#pragma once

#include "app/AppModel.h"
#include "app/LatestAnswer.h"
#include "app/StorageNotice.h"

#include <QObject>
#include <memory>
#include <optional>

namespace brindle {

/// Looks, after every run of checks of the user's own history, for something that the user should be told of
/// outside the window, if the user wants that.
/// Thread: main.
class StorageWatch : public QObject {
    Q_OBJECT

public:
    /// The model outlives it.
    explicit StorageWatch(AppModel& model, QObject* parent = nullptr);

    /// Selects the page that explains it, in the user's own history.
    void explain(const StorageNotice& notice);

Q_SIGNALS:
    /// Remembered as told from here on, whether or not anything can show it.
    void noticed(const brindle::StorageNotice& notice);

private:
    void look();
    void take(const std::optional<StorageNotice>& notice);

    AppModel& model_;
    std::shared_ptr<NoticeFinder> finder_ = std::make_shared<NoticeFinder>();  // of the answer at work
    LatestAnswer<std::optional<StorageNotice>> latest_;                        // last, so that it ends first
};

}  // namespace brindle
