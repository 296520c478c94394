#include "app/desktop/SleepWatch.h"

namespace brindle {

SleepWatch::SleepWatch(QDBusConnection systemBus) {
    systemBus.connect("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                      "PrepareForSleep", this, SLOT(preparingForSleep(bool)));
}

void SleepWatch::preparingForSleep(bool isBefore) {
    if (!isBefore) Q_EMIT didWake();
}

}  // namespace brindle
