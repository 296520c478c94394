#pragma once

#include "platform/linux/FolderSequence.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

namespace brindle {

/// The same folders, found and listed on a thread of its own, a few dozen ahead of whoever takes them, so
/// that listing folders and asking for the status of files go on at the same time. As asking takes longer,
/// the thread asks as well whenever enough folders wait, so that both have the same to do.
///
/// At most 48 folders are open for it, and as many entries waiting as 4,000, or those of one folder more.
class ListAhead final : public FolderSequence {
public:
    explicit ListAhead(std::unique_ptr<FolderSequence> folders);
    ~ListAhead() override;
    ListAhead(const ListAhead&) = delete;
    ListAhead& operator=(const ListAhead&) = delete;

    /// Throws: what listing threw.
    [[nodiscard]] bool next(ListedFolder& folder) override;
    void enter(ListedFolder&) override {}
    void passOver(const ListedFolder& folder) override { passedOver_ = folder.serial; }

private:
    /// Folders that are handed over together: a hand-over costs as much as listing one.
    struct Part {
        std::vector<ListedFolder> folders;
        std::size_t entries = 0;
    };

    void run();
    void list();
    [[nodiscard]] bool isAwaited();
    [[nodiscard]] bool handOver(Part part);
    [[nodiscard]] bool takePart();

    std::unique_ptr<FolderSequence> folders_;  // the thread's own
    std::vector<ListedFolder> taken_;
    std::size_t nextTaken_ = 0;
    std::atomic<std::uint64_t> passedOver_ = 0;

    std::mutex lock_;
    std::condition_variable changed_;
    std::deque<Part> waiting_;
    std::size_t waitingEntries_ = 0;
    std::exception_ptr failure_;
    bool isEnded_ = false;
    bool isAbandoned_ = false;
    std::thread thread_;  // last, so that it begins when all else is there
};

}  // namespace brindle
