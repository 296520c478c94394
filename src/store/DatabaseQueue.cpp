#include "store/DatabaseQueue.h"

#include <cstdio>
#include <cstdlib>

namespace brindle {
namespace {

/// The end of a label tells the queues apart.
std::string threadName(const std::string& label) {
    return label.size() > TaskThread::longestName ? label.substr(label.size() - TaskThread::longestName)
                                                  : label;
}

}  // namespace

DatabaseQueue::DatabaseQueue(const std::string& path, std::string label)
    : label_(std::move(label)), connection_(path), thread_(threadName(label_)) {}

void DatabaseQueue::stopIfEnteredFromItself() const {
    if (!thread_.isCurrent()) return;
    std::fprintf(stderr, "brindle: the queue %s was entered from itself\n", label_.c_str());
    std::abort();
}

}  // namespace brindle
