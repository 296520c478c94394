#include "platform/TaskThread.h"

#include <pthread.h>

namespace brindle {

TaskThread::TaskThread(const std::string& name) : thread_([this] { runTasks(); }) {
    pthread_setname_np(thread_.native_handle(), name.c_str());
}

TaskThread::~TaskThread() {
    {
        const std::scoped_lock guard(mutex_);
        isClosing_ = true;
    }
    arrived_.notify_one();
    thread_.join();
}

void TaskThread::enqueue(std::function<void()> task) {
    {
        const std::scoped_lock guard(mutex_);
        tasks_.push_back(std::move(task));
    }
    arrived_.notify_one();
}

std::optional<std::function<void()>> TaskThread::nextTask() {
    std::unique_lock guard(mutex_);
    arrived_.wait(guard, [this] { return !tasks_.empty() || isClosing_; });
    if (tasks_.empty()) return {};
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    return task;
}

void TaskThread::runTasks() {
    while (auto task = nextTask()) (*task)();
}

}  // namespace brindle
