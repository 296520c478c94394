#include "app/StorageWatch.h"

#include "model/Retention.h"

namespace brindle {

StorageWatch::StorageWatch(AppModel& model, QObject* parent)
    : QObject(parent),
      model_(model),
      latest_([this](const std::optional<StorageNotice>& notice) { take(notice); },
              [](const std::exception& /*error*/) {
                  // The history tells of its own trouble; the next run brings the next look.
              }) {
    connect(&model, &AppModel::runTaken, this, &StorageWatch::look);
    connect(model.settings(), &Settings::notifiesAboutGrowthChanged, this, &StorageWatch::look);
}

void StorageWatch::look() {
    const Settings& settings = *model_.settings();
    const auto source = model_.session().source();
    if (!settings.notifiesAboutGrowth() || source == nullptr || model_.isShuttingDown())
        return latest_.forget();
    latest_.ask([finder = finder_, source, snapshot = model_.ownFigures().snapshot,
                 told = ToldNotices(settings.toldNotices()),
                 calendar = model_.calendar()] { return finder->find(*source, snapshot, told, calendar); });
}

void StorageWatch::take(const std::optional<StorageNotice>& notice) {
    if (!notice || model_.isShuttingDown()) return;
    ToldNotices told(model_.settings()->toldNotices());
    if (told.hasAnyOn(notice->day)) return;
    told.add(notice->subject, notice->day, firstKeptDay(model_.calendar(), notice->day));
    model_.settings()->setToldNotices(told.text());
    Q_EMIT noticed(*notice);
}

void StorageWatch::explain(const StorageNotice& notice) {
    if (model_.mode() == AppMode(PlainMode::example)) model_.showOwnHistory();
    model_.leaveSetup();
    Selection& selection = *model_.selection();
    selection.setScope({});
    if (notice.folder) {
        selection.setDay(notice.day);
        selection.setExplorer({.folder = notice.folder});
    }
    selection.setDestination(notice.folder ? Destination::activity : Destination::locations);
}

}  // namespace brindle
