#include "ui/tray/MiniWindow.h"

#include "ui/tray/X11Desktop.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariantMap>
#include <stdexcept>

namespace brindle {

MiniWindow::MiniWindow(AppModel& model, QObject* parent) : QObject(parent), app_(model), model_(model) {
    connect(&model, &AppModel::miniWindowChanged, this, &MiniWindow::showOrHide);
}

MiniWindow::~MiniWindow() = default;

void MiniWindow::showOrHide() {
    if (!app_.isMiniWindowOpen()) {
        if (window_ != nullptr) window_->hide();
        return;
    }
    if (!engine_) create();
    x11Desktop::joinAllDesktops(*window_);
    window_->show();
    window_->raise();
}

void MiniWindow::create() {
    engine_ = std::make_unique<QQmlApplicationEngine>();
    engine_->addImportPath("qrc:/qt/qml");
    // Only X11 lets a program say which of the windows are in front.
    const bool canKeepOnTop = !QGuiApplication::platformName().startsWith("wayland");
    engine_->setInitialProperties({{"model", QVariant::fromValue(&model_)}, {"canKeepOnTop", canKeepOnTop}});
    engine_->load(QUrl("qrc:/qt/qml/Brindle/Tray/MiniWindow.qml"));
    window_ = engine_->rootObjects().isEmpty() ? nullptr
                                               : qobject_cast<QQuickWindow*>(engine_->rootObjects().first());
    if (window_ == nullptr) throw std::runtime_error("The mini window's own files are damaged.");
    // Window managers give the keyboard to a new window unless it says otherwise.
    window_->setProperty("_q_showWithoutActivating", true);
    place();
}

void MiniWindow::place() {
    QRect frame(QPoint(), window_->size());
    if (const auto stored = frameFrom(app_.settings()->miniWindowFrame()))
        frame.moveTopLeft(stored->topLeft());
    else
        frame.moveCenter(window_->screen()->availableGeometry().center());
    frame_ = std::make_unique<FrameKeeper>(*window_, frameText(frame), [this](const std::string& text) {
        app_.settings()->setMiniWindowFrame(text);
    });
}

}  // namespace brindle
