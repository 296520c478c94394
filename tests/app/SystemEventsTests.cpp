#include "app/LoginManager.h"
#include "app/PrivateBus.h"
#include "app/desktop/DriveWatch.h"
#include "app/desktop/SleepWatch.h"
#include "app/desktop/SystemEvents.h"
#include "app/desktop/TimeZoneWatch.h"
#include "model/Calendar.h"
#include "model/TimeZone.h"
#include "support/TestMounts.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QTimer>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

TEST(SleepWatch, HearsEveryWakeFromWhicheverLoginManagerThereIs) {
    PrivateBus bus;
    int wakes = 0;
    SleepWatch watch(bus.connect());
    QObject::connect(&watch, &SleepWatch::didWake, [&] { ++wakes; });
    for (int started = 1; started <= 2; ++started) {
        const MockService manager(bus, "logind", loginManager);
        // Somebody who is not the login manager says the same.
        auto lie = QDBusMessage::createSignal("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                              "PrepareForSleep");
        lie << false;
        bus.connect().send(lie);
        sleepAndWake(bus.connect());
        EXPECT_TRUE(eventually([&] { return wakes >= started; }));
        EXPECT_EQ(wakes, started);
    }
}

/// The time zone of the system as the environment gives it to this process, put back when it goes.
class ZoneVariable {
public:
    explicit ZoneVariable(const char* zone) {
        set(zone);
        (void)followSystemTimeZone();
    }
    ~ZoneVariable() {
        ::unsetenv("TZ");
        (void)followSystemTimeZone();
    }
    ZoneVariable(const ZoneVariable&) = delete;
    ZoneVariable& operator=(const ZoneVariable&) = delete;

    static void set(const char* zone) { ::setenv("TZ", zone, 1); }
};

double hoursAhead() {
    const LocalDay day{2026, 7, 1};
    return (Calendar("en_US", "UTC").time(day) - Calendar::current().time(day)) / 3600;
}

TEST(TimeZoneWatch, HearsOfAZoneFromTheServiceThatSetsIt) {
    PrivateBus bus;
    const MockService service(bus, "timedated", "org.freedesktop.timedate1");
    const TempFolder folder;
    ZoneVariable zone("Europe/Berlin");
    TimeZoneWatch watch(bus.connect(), QString::fromStdString((folder.path() / "localtime").string()));
    int changes = 0;
    QObject::connect(&watch, &TimeZoneWatch::timeZoneChanged, [&] { ++changes; });

    const auto set = [client = bus.connect()](const char* what, const QVariantList& values) {
        auto call = QDBusMessage::createMethodCall("org.freedesktop.timedate1", "/org/freedesktop/timedate1",
                                                   "org.freedesktop.timedate1", what);
        call.setArguments(values);
        EXPECT_EQ(client.call(call).type(), QDBusMessage::ReplyMessage);
    };
    zone.set("Asia/Tokyo");
    set("SetNTP", {false, false});
    set("SetTimezone", {"Asia/Tokyo", false});
    EXPECT_TRUE(eventually([&] { return changes > 0; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(hoursAhead(), 9);
}

TEST(TimeZoneWatch, NoticesTheFileWhateverWayItIsReplaced) {
    const TempFolder folder;
    const fs::path file = folder.path() / "localtime";
    int links = 0;
    const auto link = [&] {
        const fs::path rules = folder.path() / std::to_string(++links);
        std::ofstream(rules) << "rules";
        fs::create_symlink(rules, folder.path() / "new");
        fs::rename(folder.path() / "new", file);
    };
    const auto write = [&] { std::ofstream(file) << "rules"; };
    const auto remove = [&] { fs::remove(file); };
    const std::function<void()> ways[] = {link, write, link, write, remove, write, write};

    ZoneVariable zone("Europe/Berlin");
    int changes = 0;
    TimeZoneWatch watch(QDBusConnection("no bus"), QString::fromStdString(file.string()));
    QObject::connect(&watch, &TimeZoneWatch::timeZoneChanged, [&] { ++changes; });
    int expected = 0;
    for (const auto& change : ways) {
        zone.set(expected % 2 == 0 ? "Asia/Tokyo" : "Europe/Berlin");
        change();
        EXPECT_TRUE(eventually([&] { return changes > expected; })) << "change " << expected;
        EXPECT_EQ(changes, ++expected);
    }
}

TEST(DriveWatch, TellsOfDrivesAndOfNoOtherMounts) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const fs::path image = folder.path() / "image";
    const fs::path memory = folder.path() / "memory";
    const fs::path drive = folder.path() / "drive";
    fs::create_directory(memory);
    fs::create_directory(drive);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "mkfs.ext4 is not installed";

    DriveWatch watch;
    std::string told;
    QObject::connect(&watch, &DriveWatch::mounted, [&] { told += "+"; });
    QObject::connect(&watch, &DriveWatch::unmounted, [&] { told += "-"; });
    const auto pass = [](std::chrono::milliseconds time) {
        bool isOver = false;
        QTimer::singleShot(time, [&] { isOver = true; });
        (void)eventually([&] { return isOver; });
    };

    auto other = TestMount::memory(memory);
    pass(std::chrono::milliseconds(700));
    EXPECT_EQ(told, "");
    auto mount = TestMount::image(image, drive);
    EXPECT_TRUE(eventually([&] { return !told.empty(); }));
    other.unmount();
    mount.unmount();
    EXPECT_TRUE(eventually([&] { return told.size() > 1; }));
    // In and out before anybody looked.
    TestMount::image(image, drive).unmount();
    pass(std::chrono::milliseconds(700));
    EXPECT_EQ(told, "+-");
}

TEST(SystemEvents, WithoutABusTheRestIsHeard) {
    const TempFolder folder;
    ZoneVariable zone("Etc/GMT+12");
    SystemEvents events(QDBusConnection("no bus"));
    bool isActive = false;
    QObject::connect(&events, &SystemEvents::becameActive, [&] { isActive = true; });
    events.becomeActive();
    EXPECT_TRUE(isActive);
}

TEST(SystemEvents, AWakeTellsFirstThatItIsAnotherDayElsewhere) {
    PrivateBus bus;
    // A day ahead of each other, whatever the time.
    ZoneVariable zone("Etc/GMT+12");
    SystemEvents events(bus.connect());
    std::vector<std::string> told;
    QObject::connect(&events, &SystemEvents::dayChanged, [&] { told.emplace_back("day"); });
    QObject::connect(&events, &SystemEvents::timeZoneChanged, [&] { told.emplace_back("zone"); });
    QObject::connect(&events, &SystemEvents::didWake, [&] { told.emplace_back("wake"); });
    const MockService manager(bus, "logind", loginManager);
    zone.set("Pacific/Kiritimati");
    sleepAndWake(bus.connect());
    EXPECT_TRUE(eventually([&] { return told.size() >= 3; }));
    EXPECT_EQ(told, (std::vector<std::string>{"zone", "day", "wake"}));
}

}  // namespace
}  // namespace brindle
