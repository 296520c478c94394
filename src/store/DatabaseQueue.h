#pragma once

#include "store/SQLiteConnection.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace brindle {

/// One thread with one connection: work items run on it one at a time, in the order in which they came.
/// Any thread may hand in work; handing in work from the queue's own thread stops the process, since
/// waiting for it would never end.
class DatabaseQueue {
public:
    /// `label` names the thread (for people with a debugger). Throws: SQLiteError when opening fails.
    DatabaseQueue(const std::string& path, std::string label, bool readOnly = false);

    /// Runs what was handed in, then closes the connection.
    ~DatabaseQueue();
    DatabaseQueue(const DatabaseQueue&) = delete;
    DatabaseQueue& operator=(const DatabaseQueue&) = delete;

    /// Runs `body(connection)` on the queue. The future gives its result or its error.
    template <class Body>
    [[nodiscard]] auto perform(Body body) -> std::future<std::invoke_result_t<Body&, SQLiteConnection&>> {
        using Result = std::invoke_result_t<Body&, SQLiteConnection&>;
        // std::function wants what can be copied, and a task cannot: hence the shared pointer.
        auto task = std::make_shared<std::packaged_task<Result(SQLiteConnection&)>>(std::move(body));
        auto result = task->get_future();
        enqueue([task](SQLiteConnection& connection) { (*task)(connection); });
        return result;
    }

private:
    using WorkItem = std::function<void(SQLiteConnection&)>;

    void enqueue(WorkItem item);
    void runItems();
    [[nodiscard]] std::optional<WorkItem> nextItem();

    std::string label_;
    std::optional<SQLiteConnection> connection_;
    std::mutex lock_;
    std::condition_variable arrived_;
    std::deque<WorkItem> items_;
    bool isClosing_ = false;
    std::thread thread_;
};

}  // namespace brindle
