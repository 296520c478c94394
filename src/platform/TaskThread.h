#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace brindle {

/// One thread that runs tasks one at a time, in the order in which they came. Any thread may hand in tasks.
class TaskThread {
public:
    static constexpr std::size_t longestName = 15;  // pthread_setname_np(3)

    /// `name`: at most longestName bytes, for people with a debugger.
    explicit TaskThread(const std::string& name);

    /// Runs what was handed in, then ends.
    ~TaskThread();
    TaskThread(const TaskThread&) = delete;
    TaskThread& operator=(const TaskThread&) = delete;

    /// The future gives the task's result or its error.
    template <class Task>
    [[nodiscard]] auto perform(Task task) -> std::future<std::invoke_result_t<Task&>> {
        // std::function wants what can be copied, and a packaged task cannot: hence the shared pointer.
        auto packaged = std::make_shared<std::packaged_task<std::invoke_result_t<Task&>()>>(std::move(task));
        auto result = packaged->get_future();
        enqueue([packaged] { (*packaged)(); });
        return result;
    }

    [[nodiscard]] bool isCurrent() const { return std::this_thread::get_id() == thread_.get_id(); }

private:
    void enqueue(std::function<void()> task);
    void runTasks();
    [[nodiscard]] std::optional<std::function<void()>> nextTask();

    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<std::function<void()>> tasks_;
    bool isClosing_ = false;
    std::thread thread_;
};

}  // namespace brindle
