#pragma once

#include "support/Program.h"
#include "support/TempFolder.h"

#include <QDBusConnection>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// A message bus of the test's own, on which no service is started by being asked for. It stands for the
/// user's bus or the system's.
class PrivateBus {
public:
    /// Throws std::runtime_error when the bus does not come up.
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// A connection as that of a program of its own. Any thread.
    [[nodiscard]] QDBusConnection connect();
    [[nodiscard]] std::string address() const;
    [[nodiscard]] bool hasService(const QString& name);

private:
    TempFolder folder_;
    std::unique_ptr<RunningProgram> daemon_;
    std::vector<QString> connections_;
};

/// A stand-in for a service of the system, made of one of the templates that python3-dbusmock brings. It ends
/// when it goes.
class MockService {
public:
    /// Throws std::runtime_error when the service does not come up.
    MockService(PrivateBus& bus, const std::string& mockTemplate, const QString& name);

private:
    RunningProgram program_;
};

/// Runs the event loop until the condition holds. False when it does not within any reasonable time.
[[nodiscard]] bool eventually(const std::function<bool()>& condition);

}  // namespace brindle
