#include "app/Background.h"

namespace brindle {

Background::Background(int threads) {
    pool_.setMaxThreadCount(threads);
    connect(this, &Background::posted, this, &Background::takePosted, Qt::QueuedConnection);
}

Background::~Background() {
    pool_.waitForDone();
}

void Background::post(std::function<void()> task) {
    const std::scoped_lock guard(mutex_);
    posted_.push_back(std::move(task));
    // Under the lock, so that whoever destroys this has not begun when the signal is sent.
    if (posted_.size() == 1) Q_EMIT posted();
}

void Background::takePosted() {
    std::vector<std::function<void()>> tasks;
    {
        const std::scoped_lock guard(mutex_);
        tasks.swap(posted_);
    }
    for (const auto& task : tasks) task();
}

}  // namespace brindle
