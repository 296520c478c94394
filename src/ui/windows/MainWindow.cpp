#include "ui/windows/MainWindow.h"

#include <QVariantMap>
#include <stdexcept>

namespace brindle {

MainWindow::MainWindow(AppModel& model, Reveal& reveal, QObject* parent)
    : QObject(parent),
      app_(model),
      appearance_(*model.settings()),
      windowModel_(model),
      overview_(model),
      activity_(model),
      storageHistory_(model),
      trends_(model),
      tracking_(model),
      drives_(model, tracking_),
      exporter_(model),
      about_(model),
      startup_(model),
      settingsModel_(model, startup_),
      settingsWindow_(settingsModel_, windowModel_),
      setup_(model, tracking_) {
    connect(&windowModel_, &WindowModel::revealRequested, &reveal, &Reveal::show);
    connect(&reveal, &Reveal::failed, &windowModel_, &WindowModel::revealFailed);
    connect(&drives_, &DrivesModel::revealRequested, &reveal, &Reveal::show);
    connect(drives_.actions(), &LocationActionsModel::folderRequested, &folderDialog_, &FolderDialog::open);
    connect(&folderDialog_, &FolderDialog::chosen, drives_.actions(), &LocationActionsModel::takeFolder);
    connect(setup_.locations(), &LocationChoice::folderRequested, &setupFolderDialog_, &FolderDialog::open);
    connect(&setupFolderDialog_, &FolderDialog::chosen, setup_.locations(), &LocationChoice::include);
    connect(&exporter_, &ExportModel::revealRequested, &reveal, &Reveal::show);
    connect(&settingsModel_, &SettingsModel::revealRequested, &reveal, &Reveal::show);
    connect(&windowModel_, &WindowModel::settingsRequested, this, &MainWindow::showSettings);
    connect(&windowModel_, &WindowModel::updatesRequested, this, &MainWindow::showUpdates);
    connect(&windowModel_, &WindowModel::quitRequested, this, &MainWindow::quitRequested);
}

MainWindow::~MainWindow() = default;

void MainWindow::show(const QString& activationToken) {
    if (!engine_) create();
    // Where the window system knows such tokens, its plug-in takes the next one from the environment.
    if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    if (window_->visibility() == QWindow::Minimized)
        window_->showNormal();
    else
        window_->show();
    window_->requestActivate();
}

void MainWindow::hide() {
    settingsWindow_.hide();
    if (window_ != nullptr) window_->hide();
}

void MainWindow::showUpdates() {
    settingsModel_.setSection(SettingsModel::Updates);
    settingsWindow_.show();
}

void MainWindow::create() {
    engine_ = std::make_unique<QQmlApplicationEngine>();
    engine_->addImportPath("qrc:/qt/qml");
    engine_->setInitialProperties({{"model", QVariant::fromValue(&windowModel_)},
                                   {"overview", QVariant::fromValue(&overview_)},
                                   {"activity", QVariant::fromValue(&activity_)},
                                   {"storageHistory", QVariant::fromValue(&storageHistory_)},
                                   {"trends", QVariant::fromValue(&trends_)},
                                   {"drives", QVariant::fromValue(&drives_)},
                                   {"exporter", QVariant::fromValue(&exporter_)},
                                   {"about", QVariant::fromValue(&about_)},
                                   {"setup", QVariant::fromValue(&setup_)},
                                   {"startup", QVariant::fromValue(&startup_)}});
    engine_->load(QUrl("qrc:/qt/qml/Brindle/Windows/MainWindow.qml"));
    window_ = engine_->rootObjects().isEmpty() ? nullptr
                                               : qobject_cast<QQuickWindow*>(engine_->rootObjects().first());
    if (window_ == nullptr) throw std::runtime_error("The window's own files are damaged.");
    connect(window_, SIGNAL(closing(QQuickCloseEvent*)), SIGNAL(closed()));
    frame_ = std::make_unique<FrameKeeper>(
        *window_, app_.settings()->mainWindowFrame(),
        [this](const std::string& frame) { app_.settings()->setMainWindowFrame(frame); });
}

}  // namespace brindle
