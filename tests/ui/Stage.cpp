#include "ui/Stage.h"

#include "app/EventLoop.h"
#include "app/RecordingLoginItem.h"
#include "example/ExampleHistory.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QQmlEngine>
#include <QQmlIncubationController>
#include <QQuickItem>
#include <stdexcept>

namespace brindle {
namespace {

/// Never rings: no check begins by itself.
class SilentAlarm final : public Alarm {
public:
    void callIn(std::chrono::milliseconds, std::function<void()>) override {}
    void cancel() override {}
};

const nlohmann::ordered_json deadFeed{{"SUFeedURL", "https://localhost:1/feed.xml"},
                                      {"SUPublicEDKey", "11qYAYKxCrfVS/7TyWQHOg7hcvPapiMlrwIaaPcHURo="}};

/// The first of what is shown.
QQuickItem* find(QQuickItem* item, const std::function<bool(QQuickItem&)>& isIt) {
    if (!item->isVisible()) return nullptr;
    if (isIt(*item)) return item;
    for (QQuickItem* child : item->childItems())
        if (QQuickItem* found = find(child, isIt)) return found;
    return nullptr;
}

}  // namespace

Stage::Stage(StageSettings settings) {
    const std::string data = (folder_.path() / "data").string();
    settings.prepare(data);
    LaunchOptions options;
    options.dataDirectory = data;
    options.startInExample = settings.isExample;
    model_ = std::make_unique<AppModel>(AppParts{
        .options = options,
        .preferences = settings.preferences,
        .settingsFile = SettingsFile((folder_.path() / "preferences.json").string()),
        .session = {.dataDirectory = data,
                    .clock = {.now = [now = settings.now] { return now; },
                              .calendar = [calendar = settings.calendar] { return calendar; }},
                    .trees = settings.trees},
        .alarm = std::make_unique<SilentAlarm>(),
        .uptime = [] { return std::chrono::milliseconds(0); },
        .loginItem = std::make_unique<RecordingLoginItem>(),
        .updates =
            [this, hasUpdates = settings.hasUpdates](std::function<bool()> isBusy) {
                return std::make_unique<UpdateController>(
                    hasUpdates, SettingValues(deadFeed),
                    UpdateServices{.runningVersion = *ProgramVersion::from("1.0"),
                                   .settings = SettingValues(),
                                   .settingsFile = SettingsFile((folder_.path() / "updates.json").string())},
                    std::move(isBusy));
            },
        .example = [settings] { return std::make_shared<ExampleHistory>(settings.calendar, settings.now); }});
    surfaces_ = std::make_unique<DesktopSurfaces>(*model_, settings.sessionBus, "true");
    model_->start();
    settings.begin(*surfaces_);
    if (!runUntil([this] { return model_->mode() != AppMode(PlainMode::starting); }))
        throw std::runtime_error("the history doesn't open");
    settle();
}

Stage::~Stage() {
    bool isReady = false;
    QObject::connect(model_.get(), &AppModel::readyToQuit, [&] { isReady = true; });
    model_->shutDown();
    static_cast<void>(runUntil([&] { return isReady; }));
}

void Stage::settle() {
    QElapsedTimer time;
    time.start();
    const auto isMaking = [&] {
        const QQuickWindow* window = mainWindow().window();
        return window != nullptr && qmlEngine(window)->incubationController()->incubatingObjectCount() > 0;
    };
    while (time.elapsed() < 350) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (isMaking()) time.restart();
    }
}

QQuickItem* Stage::named(const QString& accessibleName) {
    return find(window().contentItem(), [&](QQuickItem& item) {
        auto* reader = QAccessible::queryAccessibleInterface(&item);
        return reader != nullptr && reader->text(QAccessible::Name) == accessibleName;
    });
}

QQuickItem* Stage::item(const QString& objectName) {
    return find(window().contentItem(),
                [&](const QQuickItem& item) { return item.objectName() == objectName; });
}

}  // namespace brindle
