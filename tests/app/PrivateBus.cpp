#include "app/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <atomic>
#include <chrono>
#include <fstream>
#include <stdexcept>

namespace brindle {
namespace {

// What checks write is written at the lowest priority: beside other work that takes its time.
constexpr std::chrono::seconds longestWait{100};

ProgramLaunch daemonLaunch(const std::filesystem::path& folder) {
    const auto configuration = folder / "bus.conf";
    std::ofstream(configuration) << "<busconfig><type>session</type><listen>unix:path="
                                 << (folder / "bus").native()
                                 << "</listen><policy context='default'><allow send_destination='*'/>"
                                    "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>";
    return {
        .arguments = {"dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + configuration.native()},
        .environment = {}};
}

ProgramLaunch mockLaunch(const PrivateBus& bus, const std::string& mockTemplate) {
    // The one that the system's packages are for, whatever else the user has in PATH.
    return {.arguments = {"/usr/bin/python3", "-m", "dbusmock", "--template", mockTemplate},
            .environment = {"DBUS_SYSTEM_BUS_ADDRESS=" + bus.address()}};
}

}  // namespace

PrivateBus::PrivateBus() : daemon_(std::make_unique<RunningProgram>(daemonLaunch(folder_.path()))) {
    // Its socket is there a little before anybody listens to it.
    if (!eventually([this] { return connect().isConnected(); }))
        throw std::runtime_error("the bus does not come up");
}

PrivateBus::~PrivateBus() {
    for (const QString& connection : connections_) QDBusConnection::disconnectFromBus(connection);
}

QDBusConnection PrivateBus::connect() {
    static std::atomic<int> last;
    const QString name = QString("test%1").arg(++last);
    connections_.push_back(name);
    return QDBusConnection::connectToBus(QString::fromStdString(address()), name);
}

std::string PrivateBus::address() const {
    return "unix:path=" + (folder_.path() / "bus").native();
}

bool PrivateBus::hasService(const QString& name) {
    return QDBusConnection(connections_.back()).interface()->isServiceRegistered(name);
}

MockService::MockService(PrivateBus& bus, const std::string& mockTemplate, const QString& name)
    : program_(mockLaunch(bus, mockTemplate)) {
    if (!eventually([&] { return bus.hasService(name) || !program_.isRunning(); }) || !program_.isRunning())
        throw std::runtime_error("the mock service does not come up");
}

bool eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(longestWait);
    QEventLoop events;  // that of the thread, whichever it is
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        events.processEvents();
        QThread::msleep(1);
    }
    return true;
}

}  // namespace brindle
