#pragma once

#include "app/AppModel.h"
#include "app/desktop/SingleInstance.h"
#include "app/desktop/SystemEvents.h"

#include <QObject>
#include <QString>
#include <memory>

namespace brindle {

/// A running Brindle without its windows: the model, what it hears of the desktop, and how it ends.
/// Thread: main.
class DesktopProgram : public QObject {
    Q_OBJECT

public:
    /// `instance` has begun, as the first.
    DesktopProgram(std::unique_ptr<AppModel> model, SingleInstance& instance,
                   const QDBusConnection& systemBus);

    [[nodiscard]] AppModel& model() { return *model_; }
    [[nodiscard]] SystemEvents& events() { return events_; }

    /// The first request lets the running check and the last write end before ended() comes; a second one
    /// ends at once.
    void requestQuit();

    /// "check-now", "mini-window" or "quit"; any other is passed over. A check, which begins as soon as the
    /// history is open, is shown in the window. The token may be empty.
    void perform(const QString& action, const QString& activationToken);

Q_SIGNALS:
    /// A later start, or the desktop, wants the window. The token may be empty.
    void showWindowRequested(const QString& activationToken);
    /// The windows are to go; ended() follows.
    void quitBegan();
    void ended();

private:
    std::unique_ptr<AppModel> model_;
    SingleInstance& instance_;
    SystemEvents events_;
    bool isQuitting_ = false;
};

}  // namespace brindle
