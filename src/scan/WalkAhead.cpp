#include "scan/WalkAhead.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstddef>
#include <future>
#include <mutex>
#include <span>
#include <utility>
#include <vector>

namespace brindle {
namespace {

/// Small, so that what waits between the threads needs little memory.
constexpr std::size_t entriesPerSlot = 500;

/// Thrown through the walk when nobody takes its batches any more.
struct SinkGone {};

/// Batches between the thread that walks and the one that records. Their strings are used again, so that an
/// entry allocates nothing once the first batches are through.
class BatchQueue {
public:
    /// Copies the batch; waits while the queue is full. Throws: SinkGone.
    void push(std::span<const ScanEntry> batch) {
        while (!batch.empty()) {
            const auto part = batch.first(std::min(batch.size(), entriesPerSlot));
            Slot& slot = freeSlot();
            std::copy(part.begin(), part.end(), slot.entries.begin());
            slot.count = part.size();
            handOver();
            batch = batch.subspan(part.size());
        }
    }

    /// Hands over the oldest batch, waiting for one. False when there is none and none will come.
    bool take(const EntrySink& sink) {
        std::unique_lock guard(lock_);
        changed_.wait(guard, [this] { return count_ > 0 || isEnded_; });
        if (count_ == 0) return false;
        const Slot& slot = slots_[first_];
        guard.unlock();
        sink(std::span(slot.entries).first(slot.count));
        guard.lock();
        first_ = (first_ + 1) % slots_.size();
        --count_;
        changed_.notify_one();
        return true;
    }

    void end() { raise(isEnded_); }
    void abandon() { raise(isAbandoned_); }

private:
    struct Slot {
        std::vector<ScanEntry> entries = std::vector<ScanEntry>(entriesPerSlot);
        std::size_t count = 0;
    };

    /// Nobody else's until it is handed over.
    Slot& freeSlot() {
        std::unique_lock guard(lock_);
        changed_.wait(guard, [this] { return count_ < slots_.size() || isAbandoned_; });
        if (isAbandoned_) throw SinkGone();
        return slots_[(first_ + count_) % slots_.size()];
    }

    void handOver() {
        const std::scoped_lock guard(lock_);
        ++count_;
        changed_.notify_one();
    }

    void raise(bool& flag) {
        const std::scoped_lock guard(lock_);
        flag = true;
        changed_.notify_one();
    }

    std::mutex lock_;
    std::condition_variable changed_;
    std::array<Slot, 4> slots_;
    std::size_t first_ = 0;
    std::size_t count_ = 0;
    bool isEnded_ = false;
    bool isAbandoned_ = false;
};

/// Calls a function on every way out.
template <class Function>
class OnExit {
public:
    explicit OnExit(Function function) : function_(std::move(function)) {}
    ~OnExit() { function_(); }
    OnExit(const OnExit&) = delete;
    OnExit& operator=(const OnExit&) = delete;

private:
    Function function_;
};

}  // namespace

Walk walkAhead(Walk walk) {
    return [walk = std::move(walk)](const EntrySink& sink) {
        BatchQueue batches;
        std::future<ScanReport> report = std::async(std::launch::async, [&] {
            const OnExit end([&] { batches.end(); });
            return walk([&](std::span<const ScanEntry> batch) { batches.push(batch); });
        });
        // The future waits for the walk before the queue goes; the walk must not wait for the queue then.
        const OnExit abandon([&] { batches.abandon(); });
        while (batches.take(sink)) {
        }
        return report.get();
    };
}

}  // namespace brindle
