#pragma once

#include "platform/Interruption.h"

#include <QObject>

namespace brindle {

/// Turns the signals that ask a program to stop into a request to quit. A second one ends the process at
/// once. Made before anything that starts threads, the application object included: a signal that comes
/// before the event loop runs is told when it does.
class StopSignals : public QObject {
    Q_OBJECT

public:
    StopSignals();

Q_SIGNALS:
    void quitRequested();

private:
    Interruption interruption_;
};

}  // namespace brindle
