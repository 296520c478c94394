#pragma once

#include "app/pages/SettingsModel.h"
#include "app/pages/WindowModel.h"

#include <QObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QRect>
#include <QString>
#include <memory>

namespace brindle {

/// The settings, in a window of their own. It is made when it is first shown, and hidden rather than
/// destroyed when it is closed, so that it comes up again where it was. Thread: main.
class SettingsWindow : public QObject {
    Q_OBJECT

public:
    /// Both outlive it. `window` has what is to be said in any window, and the command to quit.
    SettingsWindow(SettingsModel& model, WindowModel& window, QObject* parent = nullptr);
    ~SettingsWindow() override;

    /// Shows it in front of other windows, at the section that it was left at.
    void show();
    void hide();
    [[nodiscard]] bool isVisible() const { return window_ != nullptr && window_->isVisible(); }
    /// Null before the window was first shown.
    [[nodiscard]] QQuickWindow* window() const { return window_; }

private:
    void create();

    SettingsModel& model_;
    WindowModel& windowModel_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    QQuickWindow* window_ = nullptr;  // the engine's
    QRect frame_;                     // as it was when it was last hidden
};

}  // namespace brindle
