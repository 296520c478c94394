#pragma once

#include "platform/TaskThread.h"
#include "store/SQLiteConnection.h"

#include <future>
#include <string>
#include <type_traits>

namespace brindle {

/// One thread with one connection: work items run on it one at a time, in the order in which they came.
/// Any thread may hand in work; handing in work from the queue's own thread stops the process, since
/// waiting for it would never end.
class DatabaseQueue {
public:
    /// `label` names the thread (for people with a debugger). Throws: SQLiteError when opening fails.
    DatabaseQueue(const std::string& path, std::string label);

    /// Runs `body(connection)` on the queue. The future gives its result or its error. When the queue goes,
    /// it runs what was handed in, then closes the connection.
    template <class Body>
    [[nodiscard]] auto perform(Body body) -> std::future<std::invoke_result_t<Body&, SQLiteConnection&>> {
        stopIfEnteredFromItself();
        return thread_.perform([this, body = std::move(body)]() mutable { return body(connection_); });
    }

private:
    void stopIfEnteredFromItself() const;

    std::string label_;
    SQLiteConnection connection_;
    TaskThread thread_;  // last, so that it ends first
};

}  // namespace brindle
