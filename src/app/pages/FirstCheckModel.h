#pragma once

#include "app/AppModel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace brindle {

/// The check that sets the first baselines: how far it is, or what became of it.
/// Thread: main.
class FirstCheckModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QStringList obstacles READ obstacles NOTIFY changed)
    Q_PROPERTY(bool hasBaseline READ hasBaseline NOTIFY changed)
    Q_PROPERTY(QString activity READ activity NOTIFY progressed)
    Q_PROPERTY(QString files READ files NOTIFY progressed)
    Q_PROPERTY(QString bytes READ bytes NOTIFY progressed)
    Q_PROPERTY(QString exactBytes READ exactBytes NOTIFY progressed)
    Q_PROPERTY(QString time READ time NOTIFY progressed)
    Q_PROPERTY(QString rate READ rate NOTIFY progressed)

public:
    enum State { Ready, Running, Stopped, Failed };
    Q_ENUM(State)

    explicit FirstCheckModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] State state() const;
    [[nodiscard]] bool isRunning() const { return state() == Running; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString explanation() const;
    /// Why locations were not checked, a sentence each.
    [[nodiscard]] QStringList obstacles() const;
    /// A location has been checked: there is something to show, whatever became of the others.
    [[nodiscard]] bool hasBaseline() const;

    // Of the location that is being checked: the last of these two are of the whole run.
    [[nodiscard]] QString activity() const;
    [[nodiscard]] QString files() const;
    [[nodiscard]] QString bytes() const;
    [[nodiscard]] QString exactBytes() const;
    [[nodiscard]] QString rate() const;
    [[nodiscard]] QString time() const;

    /// Checks everything that is included, unless that is going on.
    Q_INVOKABLE void begin();
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void changed();
    void progressed();
    /// The run is over, and its figures are known: a location has a baseline, and the user did not stop it.
    void baselineSet();

private:
    void takeActivity();
    void takeFigures();

    AppModel& model_;
    bool isAsked_ = false;        // the run is about to begin
    bool isStopAsked_ = false;    // before it had begun
    bool areFiguresDue_ = false;  // of a run that is over
    QElapsedTimer sinceBegin_;
    QTimer everySecond_;
};

/// "3 min 5 s".
[[nodiscard]] QString durationText(std::int64_t seconds);

}  // namespace brindle
