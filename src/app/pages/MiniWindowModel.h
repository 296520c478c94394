#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>

namespace brindle {

/// What the mini window shows: today's figures of the history that is shown, and what Brindle is doing.
/// Thread: main.
class MiniWindowModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isExample READ isExample NOTIFY changed)
    Q_PROPERTY(bool hasFigures READ hasFigures NOTIFY changed)
    Q_PROPERTY(QString added READ added NOTIFY changed)
    Q_PROPERTY(QString addedExact READ addedExact NOTIFY changed)
    Q_PROPERTY(QString freed READ freed NOTIFY changed)
    Q_PROPERTY(QString freedExact READ freedExact NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(bool keepsOnTop READ keepsOnTop NOTIFY keepsOnTopChanged)
    Q_PROPERTY(QString keepsOnTopHelp READ keepsOnTopHelp NOTIFY keepsOnTopChanged)

public:
    explicit MiniWindowModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] bool isExample() const { return model_.mode() == AppMode(PlainMode::example); }
    [[nodiscard]] bool hasFigures() const;
    [[nodiscard]] QString added() const;
    [[nodiscard]] QString addedExact() const;
    [[nodiscard]] QString freed() const;
    [[nodiscard]] QString freedExact() const;
    /// Why there are no figures.
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString status() const;

    [[nodiscard]] bool keepsOnTop() const { return model_.settings()->miniWindowKeepsOnTop(); }
    [[nodiscard]] QString keepsOnTopHelp() const;

    Q_INVOKABLE void toggleKeepsOnTop();
    Q_INVOKABLE void openMainWindow() { model_.openMainWindow(); }
    Q_INVOKABLE void close() { model_.setMiniWindowOpen(false); }

Q_SIGNALS:
    void changed();
    void keepsOnTopChanged();

private:
    /// Of the history that is shown.
    [[nodiscard]] OwnToday today() const;

    AppModel& model_;
};

}  // namespace brindle
