#include "platform/linux/ListAhead.h"

#include "platform/linux/FolderLister.h"

#include <utility>

namespace brindle {
namespace {

constexpr std::size_t foldersOfPart = 8;
constexpr std::size_t entriesOfPart = 1'000;
constexpr std::size_t fewWaitingParts = 2;
constexpr std::size_t mostWaitingParts = 4;
constexpr std::size_t mostWaitingEntries = 4'000;
constexpr std::size_t mostAskedEntries = 1'000;  // of one folder: the answers take much more than the names

void askForFilesOf(std::vector<ListedFolder>& folders) {
    for (ListedFolder& folder : folders) {
        if (!folder.listing || folder.listing->entries.size() > mostAskedEntries) continue;
        const auto& [names, entries] = *folder.listing;
        auto answers = std::make_shared<std::vector<StatusAnswer>>(entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (const char* entry = names.data() + entries[i]; *entry == fileMark)
                (*answers)[i] = askForStatus(folder.folder->get(), entry + 1);
        folder.answers = std::move(answers);
    }
}

}  // namespace

ListAhead::ListAhead(std::unique_ptr<FolderSequence> folders)
    : folders_(std::move(folders)), thread_([this] { run(); }) {}

ListAhead::~ListAhead() {
    {
        const std::scoped_lock guard(lock_);
        isAbandoned_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

bool ListAhead::next(ListedFolder& folder) {
    if (nextTaken_ == taken_.size() && !takePart()) return false;
    folder = std::move(taken_[nextTaken_++]);
    return true;
}

bool ListAhead::takePart() {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return !waiting_.empty() || isEnded_; });
    if (waiting_.empty()) {
        if (failure_) std::rethrow_exception(failure_);
        return false;
    }
    taken_ = std::move(waiting_.front().folders);
    nextTaken_ = 0;
    waitingEntries_ -= waiting_.front().entries;
    waiting_.pop_front();
    changed_.notify_one();
    return true;
}

void ListAhead::run() {
    std::exception_ptr failure;
    try {
        list();
    } catch (...) {
        failure = std::current_exception();
    }
    const std::scoped_lock guard(lock_);
    failure_ = failure;
    isEnded_ = true;
    changed_.notify_one();
}

void ListAhead::list() {
    Part part;
    for (ListedFolder folder; folders_->next(folder);) {
        if (folder.mayEnter) folders_->enter(folder);
        if (folder.listing) part.entries += folder.listing->entries.size();
        part.folders.push_back(std::move(folder));
        if (part.folders.size() < foldersOfPart && part.entries < entriesOfPart) continue;
        if (!isAwaited()) askForFilesOf(part.folders);
        if (!handOver(std::exchange(part, {}))) return;
        if (const std::uint64_t serial = passedOver_.exchange(0); serial != 0)
            folders_->passOver({.serial = serial});
    }
    static_cast<void>(handOver(std::move(part)));
}

/// Whether the one who takes the folders will soon have none.
bool ListAhead::isAwaited() {
    const std::scoped_lock guard(lock_);
    return waiting_.size() < fewWaitingParts;
}

/// Waits until there is room. False when nobody takes the folders any more.
bool ListAhead::handOver(Part part) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] {
        return isAbandoned_ || (waiting_.size() < mostWaitingParts && waitingEntries_ < mostWaitingEntries);
    });
    if (isAbandoned_) return false;
    waitingEntries_ += part.entries;
    waiting_.push_back(std::move(part));
    changed_.notify_one();
    return true;
}

}  // namespace brindle
