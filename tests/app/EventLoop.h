#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <chrono>

namespace brindle {

/// Lets the main loop run until the condition holds. False after a time in which it should have.
template <class Condition>
[[nodiscard]] bool runUntil(Condition holds) {
    const QDeadlineTimer deadline(std::chrono::seconds(30));
    while (!holds()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}

}  // namespace brindle
