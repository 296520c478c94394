#include "app/desktop/SystemEvents.h"

#include "app/DayWatch.h"
#include "app/desktop/DriveWatch.h"
#include "app/desktop/SleepWatch.h"
#include "app/desktop/SystemClockAlarm.h"
#include "app/desktop/TimeZoneWatch.h"

namespace brindle {

struct SystemEvents::Watches {
    Watches(const QDBusConnection& systemBus, std::function<void()> dayChanged)
        : sleep(systemBus),
          timeZone(systemBus),
          day(clock, systemNow, Calendar::current, std::move(dayChanged)) {}

    SleepWatch sleep;
    TimeZoneWatch timeZone;
    SystemClockAlarm clock;
    DayWatch day;
    DriveWatch drives;
};

SystemEvents::SystemEvents(const QDBusConnection& systemBus)
    : watches_(std::make_unique<Watches>(systemBus, [this] { Q_EMIT dayChanged(); })) {
    connect(&watches_->sleep, &SleepWatch::didWake, this, &SystemEvents::wake);
    connect(&watches_->timeZone, &TimeZoneWatch::timeZoneChanged, this, [this] {
        Q_EMIT timeZoneChanged();
        watches_->day.look();
    });
    connect(&watches_->drives, &DriveWatch::mounted, this, &SystemEvents::mounted);
    connect(&watches_->drives, &DriveWatch::unmounted, this, &SystemEvents::unmounted);
}

SystemEvents::~SystemEvents() = default;

void SystemEvents::becomeActive() {
    Q_EMIT becameActive();
}

void SystemEvents::wake() {
    watches_->timeZone.look();
    watches_->day.look();
    Q_EMIT didWake();
}

}  // namespace brindle
