#include "app/CoarseAlarm.h"
#include "app/desktop/DesktopProgram.h"
#include "app/desktop/StopSignals.h"
#include "example/ExampleHistory.h"
#include "model/Catalogues.h"
#include "model/Translatable.h"
#include "model/Translation.h"
#include "platform/Display.h"
#include "platform/Paths.h"
#include "platform/TimeSinceBoot.h"
#include "settings/LaunchArguments.h"
#include "settings/ProgramInformation.h"
#include "ui/DesktopApplication.h"
#include "ui/DesktopSurfaces.h"

#include <QDBusConnection>
#include <clocale>
#include <cstdio>
#include <fmt/format.h>
#include <span>
#include <string_view>

namespace brindle {
namespace {

// The exit codes of the terminal program, where they mean the same.
constexpr int failed = 3;
constexpr int otherWindow = 5;

constexpr const char* help = translatable(
    "Brindle keeps a private, local history of where your disk space goes. This is its window; in a\n"
    "terminal, use brindle. When it is open already, that window is shown.\n"
    "\n"
    "Usage: brindle-desktop [OPTIONS]\n"
    "\n"
    "Options:\n"
    "  -BrindleDataDirectory DIR  Where the history is kept (default: ~/.local/share/Brindle)\n"
    "  -BrindleExample YES        Begin with an example history instead of yours\n"
    "  -KEY VALUE                 Any other setting, for as long as the program runs\n"
    "  --check-now                Check every location now, in the window that is open already or a new one\n"
    "  --mini-window              Show the mini window, and not the large one\n"
    "  --launched-at-login        Said by the login item: you did not ask for the window\n"
    "  --launched-by-bus          Said by the desktop, which tells what it wants in a message\n"
    "  --help                     Show this text\n"
    "  --version                  Show the version\n"
    "\n"
    "Examples:\n"
    "  brindle-desktop                      open the window, or show the one that is open\n"
    "  brindle-desktop -BrindleExample YES  look around in an example first\n"
    "\n"
    "Exit status: 0 done; 3 there is no display, or something failed; 5 the window that is open doesn't\n"
    "answer.\n");

int fail(int code, const std::string& sentence) {
    fmt::print(stderr, "{}\n", sentence);
    return code;
}

int tell(const char* text) {
    fmt::print("{}", text);
    return 0;
}

AppParts partsFrom(const SettingValues& values, const SettingsFile& file) {
    LaunchOptions options = readLaunchOptions(values);
    std::unique_ptr<LoginItemControlling> loginItem;
    if (options.trackingEnabled)
        loginItem.reset(new SystemLoginItem(SystemLoginItem::ofUser()));
    else
        loginItem = std::make_unique<UnavailableLoginItem>();
    return {.options = options,
            .preferences = readPreferences(values),
            .settingsFile = file,
            .session = {.dataDirectory = options.dataDirectory},
            .alarm = std::make_unique<CoarseAlarm>(),
            .uptime = timeSinceBoot,
            .loginItem = std::move(loginItem),
            .updates =
                [values, file, isTracking = options.trackingEnabled](std::function<bool()> isBusy) {
                    return std::make_unique<UpdateController>(
                        isTracking, readInformation(informationFile(programFile())),
                        UpdateServices::ofUser(values, file), std::move(isBusy));
                },
            .example = [] { return std::make_shared<ExampleHistory>(); }};
}

std::string activationToken() {
    for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        if (const auto token = environmentValue(name)) return *token;
    return {};
}

/// What a start asks for, here or in the program that runs already.
struct Wish {
    DesktopSurfaces::StartedBy startedBy = DesktopSurfaces::StartedBy::user;
    QString action;  // of DesktopProgram::perform(); empty for none
    QString activationToken;
};

Wish wishOf(std::span<char*> arguments) {
    using StartedBy = DesktopSurfaces::StartedBy;
    Wish wish{.activationToken = QString::fromStdString(activationToken())};
    for (const std::string_view argument : arguments) {
        if (argument == launchedAtLoginArgument) wish.startedBy = StartedBy::login;
        if (argument == "--launched-by-bus") wish.startedBy = StartedBy::request;
        if (argument == "--check-now") wish.action = "check-now";
        if (argument == "--mini-window") wish.action = "mini-window";
    }
    if (!wish.action.isEmpty()) wish.startedBy = StartedBy::request;
    return wish;
}

int run(int argc, char** argv, const StopSignals& signals) {
    DesktopApplication application(argc, argv);
    const std::span arguments = std::span(argv, static_cast<std::size_t>(argc)).subspan(1);
    const Wish wish = wishOf(arguments);
    SingleInstance instance(QDBusConnection::sessionBus());
    switch (instance.begin(wish.activationToken, wish.action)) {
        case SingleInstance::Start::first:
            break;
        case SingleInstance::Start::elsewhere:
            return 0;
        case SingleInstance::Start::noAnswer:
            return fail(otherWindow, translated("Brindle is already open and doesn't answer."));
    }

    const SettingsFile file = SettingsFile::ofUser();
    const StoredSettings stored = file.read();
    const SettingValues values(stored.values, parseLaunchArguments(arguments));
    DesktopProgram program(std::make_unique<AppModel>(partsFrom(values, file)), instance,
                           QDBusConnection::systemBus());
    AppModel& model = program.model();
    QObject::connect(&application, &DesktopApplication::becameActive, &program.events(),
                     &SystemEvents::becomeActive);
    QObject::connect(&application, &DesktopApplication::sessionEnded, &program, &DesktopProgram::requestQuit);
    QObject::connect(&signals, &StopSignals::quitRequested, &program, &DesktopProgram::requestQuit);
    QObject::connect(&program, &DesktopProgram::ended, &application, [] { DesktopApplication::exit(); });

    DesktopSurfaces surfaces(model, QDBusConnection::sessionBus());
    QObject::connect(&program, &DesktopProgram::showWindowRequested, &surfaces,
                     &DesktopSurfaces::showMainWindow);
    QObject::connect(&surfaces, &DesktopSurfaces::quitRequested, &program, &DesktopProgram::requestQuit);
    QObject::connect(&program, &DesktopProgram::quitBegan, &surfaces, &DesktopSurfaces::hide);
    QObject::connect(&model, &AppModel::noted,
                     [](const QString& sentence) { fmt::print(stderr, "{}\n", sentence.toStdString()); });
    if (stored.note) Q_EMIT model.noted(QString::fromStdString(*stored.note));
#ifdef BRINDLE_HANDLER_TIMES
    QObject::connect(&model, &AppModel::modeChanged, [&] {
        if (model.mode() != AppMode(PlainMode::starting)) application.handlerTimes().endStartUp();
    });
#endif
    model.start();
    surfaces.begin(wish.startedBy, wish.activationToken);
    program.perform(wish.action, wish.activationToken);
    const int code = DesktopApplication::exec();
#ifdef BRINDLE_HANDLER_TIMES
    if (const auto path = environmentValue("BRINDLE_HANDLER_TIMES")) application.handlerTimes().write(*path);
#endif
    return code;
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    using namespace brindle;
    std::setlocale(LC_ALL, "");
    useCatalogues(cataloguesFolder(programFile()));
    for (const std::string_view argument : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        if (argument == "--help") return tell(translated(help));
        if (argument == "--version") return tell("brindle-desktop " BRINDLE_VERSION "\n");
    }
    if (!hasDisplay())
        return fail(failed, translated("Brindle's window needs a display. In a terminal, use brindle."));
    try {
        const StopSignals signals;
        return run(argc, argv, signals);
    } catch (const std::exception& error) {
        return fail(failed, error.what());
    }
}
