#include "store/DatabaseQueue.h"

#include <cstdio>
#include <cstdlib>
#include <pthread.h>

namespace brindle {
namespace {

constexpr std::size_t longestThreadName = 15;  // pthread_setname_np(3)

}  // namespace

DatabaseQueue::DatabaseQueue(const std::string& path, std::string label, bool readOnly)
    : label_(std::move(label)) {
    connection_.emplace(path, readOnly);
    thread_ = std::thread([this] { runItems(); });
    // The end of a label tells the queues apart.
    const std::string name =
        label_.size() > longestThreadName ? label_.substr(label_.size() - longestThreadName) : label_;
    pthread_setname_np(thread_.native_handle(), name.c_str());
}

DatabaseQueue::~DatabaseQueue() {
    {
        const std::scoped_lock guard(lock_);
        isClosing_ = true;
    }
    arrived_.notify_one();
    thread_.join();
}

void DatabaseQueue::enqueue(WorkItem item) {
    if (std::this_thread::get_id() == thread_.get_id()) {
        std::fprintf(stderr, "brindle: the queue %s was entered from itself\n", label_.c_str());
        std::abort();
    }
    {
        const std::scoped_lock guard(lock_);
        items_.push_back(std::move(item));
    }
    arrived_.notify_one();
}

std::optional<DatabaseQueue::WorkItem> DatabaseQueue::nextItem() {
    std::unique_lock guard(lock_);
    arrived_.wait(guard, [this] { return !items_.empty() || isClosing_; });
    if (items_.empty()) return {};
    WorkItem item = std::move(items_.front());
    items_.pop_front();
    return item;
}

void DatabaseQueue::runItems() {
    while (auto item = nextItem()) (*item)(*connection_);
    connection_.reset();
}

}  // namespace brindle
