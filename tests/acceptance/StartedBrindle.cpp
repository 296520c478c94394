#include "acceptance/StartedBrindle.h"

#include "app/EventLoop.h"
#include "example/ExampleHistory.h"
#include "platform/Paths.h"
#include "settings/LaunchArguments.h"

#include <QDBusConnection>
#include <stdexcept>
#include <utility>

namespace brindle {
namespace {

AppParts partsAt(TestTime& time) {
    const SettingsFile file = SettingsFile::ofUser();
    const SettingValues values(file.read().values, {});
    LaunchOptions options = readLaunchOptions(values);
    const auto now = [&time] { return time.now(); };
    const auto calendar = [] { return Calendar("en_US", "UTC"); };
    return {
        .options = options,
        .preferences = readPreferences(values),
        .settingsFile = file,
        .session = {.dataDirectory = options.dataDirectory, .clock = {.now = now, .calendar = calendar}},
        .alarm = time.makeAlarm(),
        .uptime = [&time] { return time.uptime(); },
        .loginItem = std::unique_ptr<LoginItemControlling>(new SystemLoginItem(SystemLoginItem::ofUser())),
        .updates =
            [values, file](std::function<bool()> isBusy) {
                return std::make_unique<UpdateController>(
                    true, SettingValues(), UpdateServices::ofUser(values, file), std::move(isBusy));
            },
        .example = [now, calendar] { return std::make_shared<ExampleHistory>(calendar(), now()); }};
}

}  // namespace

StartedBrindle::StartedBrindle(TestTime& time) : instance_(QDBusConnection::sessionBus()) {
    if (instance_.begin({}) != SingleInstance::Start::first)
        throw std::runtime_error("another program has the session's one window");
    program_ = std::make_unique<DesktopProgram>(std::make_unique<AppModel>(partsAt(time)), instance_,
                                                QDBusConnection::systemBus());
    surfaces_ = std::make_unique<DesktopSurfaces>(model(), QDBusConnection::sessionBus());
    QObject::connect(program_.get(), &DesktopProgram::ended, [this] { hasEnded_ = true; });
    QObject::connect(program_.get(), &DesktopProgram::showWindowRequested, surfaces_.get(),
                     &DesktopSurfaces::showMainWindow);
    QObject::connect(surfaces_.get(), &DesktopSurfaces::quitRequested, program_.get(),
                     &DesktopProgram::requestQuit);
    QObject::connect(program_.get(), &DesktopProgram::quitBegan, surfaces_.get(), &DesktopSurfaces::hide);
    model().start();
    surfaces_->begin(DesktopSurfaces::StartedBy::user, {});
    if (!runUntil([this] { return model().mode() != AppMode(PlainMode::starting); }))
        throw std::runtime_error("the program does not start");
}

StartedBrindle::~StartedBrindle() {
    if (!hasEnded_) program_->requestQuit();
    static_cast<void>(runUntil([this] { return hasEnded_; }));
}

}  // namespace brindle
