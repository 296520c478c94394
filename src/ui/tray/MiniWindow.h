#pragma once

#include "app/AppModel.h"
#include "app/pages/MiniWindowModel.h"
#include "ui/windows/FrameKeeper.h"

#include <QObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <memory>

namespace brindle {

/// A small window with today's figures, which stays where it is put and takes the keyboard only when it is
/// turned to. It shows while the model says that it is open; it is made when it is first opened, and kept.
/// Thread: main.
class MiniWindow : public QObject {
    Q_OBJECT

public:
    /// The model outlives it.
    explicit MiniWindow(AppModel& model, QObject* parent = nullptr);
    ~MiniWindow() override;

    /// Null before it was first opened.
    [[nodiscard]] QQuickWindow* window() const { return window_; }

private:
    void showOrHide();
    void create();
    void place();

    AppModel& app_;
    MiniWindowModel model_;
    std::unique_ptr<QQmlApplicationEngine> engine_;  // goes before the model that its objects show
    QQuickWindow* window_ = nullptr;                 // the engine's
    std::unique_ptr<FrameKeeper> frame_;
};

}  // namespace brindle
