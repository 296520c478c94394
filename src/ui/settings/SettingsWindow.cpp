#include "ui/settings/SettingsWindow.h"

#include <QVariantMap>
#include <stdexcept>

namespace brindle {

SettingsWindow::SettingsWindow(SettingsModel& model, WindowModel& window, QObject* parent)
    : QObject(parent), model_(model), windowModel_(window) {}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::show() {
    if (!engine_) create();
    // A window manager that is not told would place it anew.
    if (!window_->isVisible() && frame_.isValid()) window_->setGeometry(frame_);
    if (window_->visibility() == QWindow::Minimized)
        window_->showNormal();
    else
        window_->show();
    window_->raise();
    window_->requestActivate();
}

void SettingsWindow::hide() {
    if (window_ != nullptr) window_->hide();
}

void SettingsWindow::create() {
    engine_ = std::make_unique<QQmlApplicationEngine>();
    engine_->addImportPath("qrc:/qt/qml");
    engine_->setInitialProperties(
        {{"model", QVariant::fromValue(&model_)}, {"windowModel", QVariant::fromValue(&windowModel_)}});
    engine_->load(QUrl("qrc:/qt/qml/Brindle/Settings/SettingsWindow.qml"));
    window_ = engine_->rootObjects().isEmpty() ? nullptr
                                               : qobject_cast<QQuickWindow*>(engine_->rootObjects().first());
    if (window_ == nullptr) throw std::runtime_error("The settings' own files are damaged.");
    connect(window_, &QWindow::visibilityChanged, this, [this](QWindow::Visibility visibility) {
        if (visibility == QWindow::Hidden) frame_ = window_->geometry();
    });
}

}  // namespace brindle
