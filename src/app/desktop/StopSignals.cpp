#include "app/desktop/StopSignals.h"

namespace brindle {

StopSignals::StopSignals()
    : interruption_(
          [this] { QMetaObject::invokeMethod(this, &StopSignals::quitRequested, Qt::QueuedConnection); }) {}

}  // namespace brindle
