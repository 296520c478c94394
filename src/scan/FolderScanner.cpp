#include "scan/FolderScanner.h"

#include "model/CheckedSum.h"
#include "platform/IoPriority.h"
#include "scan/HardLinks.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <map>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace brindle {
namespace {

constexpr std::int64_t entriesPerCancellationLook = 512;
constexpr std::int64_t filesPerProgressLook = 256;
constexpr double secondsPerProgress = 0.25;

bool isRefusal(int error) {
    return error == EACCES || error == EPERM;
}

ScanError rootError(bool isPermission) {
    return ScanError(isPermission ? ScanError::Reason::accessDenied : ScanError::Reason::missing);
}

/// The rules, arranged so that an entry costs one look-up, and none when no rule has the length of its path.
class RuleTable {
public:
    enum class Rule { none, excluded, uncounted, trash };

    explicit RuleTable(const ScanRules& rules) {
        for (const auto& path : rules.excludedPaths) add(path, Rule::excluded);
        for (const auto& path : rules.uncountedPaths)
            add(path, rules.trashPaths.contains(path) ? Rule::trash : Rule::uncounted);
    }

    [[nodiscard]] Rule of(std::string_view path) const {
        if (path.size() >= hasLength_.size() || !hasLength_[path.size()]) return Rule::none;
        const auto found = rules_.find(path);
        return found == rules_.end() ? Rule::none : found->second;
    }

private:
    struct PathHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    // The first rule of a path stays: an excluded path is not walked, whatever else it is.
    void add(const std::string& path, Rule rule) {
        if (hasLength_.size() <= path.size()) hasLength_.resize(path.size() + 1);
        hasLength_[path.size()] = true;
        rules_.try_emplace(path, rule);
    }

    std::unordered_map<std::string, Rule, PathHash, std::equal_to<>> rules_;
    std::vector<bool> hasLength_;
};

/// Entries on their way to the sink. The strings of a batch are used again for the next one, so that an entry
/// allocates nothing once the first batches are through.
class Batch {
public:
    explicit Batch(const EntrySink& sink) : sink_(sink), entries_(scanBatchLimit) {}

    void add(const TreeEvent& file) {
        ScanEntry& entry = entries_[count_++];
        entry.relativePath.assign(file.path);
        entry.size = file.status.size;
        entry.created = file.status.created;
        if (count_ == entries_.size()) handOver();
    }

    void handOver() {
        if (count_ > 0) sink_(std::span(entries_).first(count_));
        count_ = 0;
    }

private:
    const EntrySink& sink_;
    std::vector<ScanEntry> entries_;
    std::size_t count_ = 0;
};

/// The counting of one walk.
class Count {
public:
    Count(const ScanRules& rules, const ProgressSink& progress, const EntrySink& sink, const Clock& clock)
        : rules_(rules), progress_(progress), batch_(sink), clock_(clock) {}

    void take(const TreeEvent& event, TreeReader& reader) {
        if (event.level == 0)
            takeRoot(event);
        else if (uncounted_ && event.level > uncounted_->level)
            takeUncounted(event);
        else if (uncounted_ && event.level == uncounted_->level && endsFolder(event))
            uncounted_.reset();
        else
            takeCounted(event, reader);
    }

    [[nodiscard]] ScanReport finish() {
        batch_.handOver();
        for (auto& [path, isPermission] : unreadable_) report_.unreadable.push_back({path, isPermission});
        std::sort(report_.cloudOnlyFolders.begin(), report_.cloudOnlyFolders.end());
        reportProgress(clock_());
        return std::move(report_);
    }

private:
    using Kind = TreeEvent::Kind;
    using Rule = RuleTable::Rule;

    /// A tree that is walked for its allocated size only, and the level of its topmost folder.
    struct UncountedTree {
        int level = 0;
        bool isTrash = false;
    };

    static bool endsFolder(const TreeEvent& event) {
        return event.kind == Kind::directoryEnd || event.kind == Kind::unreadableDirectory;
    }

    static void takeRoot(const TreeEvent& event) {
        if (event.kind == Kind::unreadableDirectory || event.kind == Kind::noStatus)
            throw rootError(isRefusal(event.error));
    }

    void takeUncounted(const TreeEvent& event) {
        if (event.kind != Kind::file) return;
        const auto allocated = countAllocated(event.status);
        if (uncounted_->isTrash) report_.trashBytes = checkedSum(report_.trashBytes, allocated);
    }

    void takeCounted(const TreeEvent& event, TreeReader& reader) {
        switch (event.kind) {
            case Kind::directory:
                takeFolder(event, reader);
                break;
            case Kind::file:
                takeFile(event);
                break;
            case Kind::noStatus:
            case Kind::unreadableDirectory:
                if (rules_.of(event.path) == Rule::none) recordUnreadable(event);
                break;
            case Kind::directoryEnd:
            case Kind::other:
                break;
        }
    }

    void takeFolder(const TreeEvent& event, TreeReader& reader) {
        const Rule rule = rules_.of(event.path);
        if (rule == Rule::excluded) {
            reader.skip();
        } else if (rule != Rule::none) {
            uncounted_ = {.level = event.level, .isTrash = rule == Rule::trash};
            report_.uncounted.emplace_back(event.path);
        } else if (event.status.isDataless) {
            reader.skip();
            report_.cloudOnlyFolders.emplace_back(event.path);
        }
    }

    void takeFile(const TreeEvent& event) {
        const Rule rule = rules_.of(event.path);
        if (rule == Rule::excluded) return;
        countAllocated(event.status);
        if (rule != Rule::none) {
            report_.uncounted.emplace_back(event.path);
            return;
        }

        const auto size = event.status.size;
        if (event.status.isDataless) report_.cloudOnlyBytes = checkedSum(report_.cloudOnlyBytes, size);
        report_.filesSeen += 1;
        report_.totalBytes = checkedSum(report_.totalBytes, size);
        batch_.add(event);
        if (report_.filesSeen % filesPerProgressLook == 0) lookAtProgress();
    }

    std::int64_t countAllocated(const EntryStatus& status) {
        if (!hardLinks_.isFirst(status.inode, status.links)) return 0;
        report_.allocatedBytes = checkedSum(report_.allocatedBytes, status.allocatedBytes);
        return status.allocatedBytes;
    }

    // One refusal of access is enough, whatever else was wrong with the folder.
    void recordUnreadable(const TreeEvent& event) {
        unreadable_[std::string(event.path)] |= isRefusal(event.error);
    }

    void lookAtProgress() {
        const double now = clock_();
        if (now - lastProgress_ < secondsPerProgress) return;
        reportProgress(now);
        lastProgress_ = now;
    }

    void reportProgress(double now) {
        progress_({.filesSeen = report_.filesSeen, .bytesSeen = report_.totalBytes, .elapsed = now - start_});
    }

    RuleTable rules_;
    const ProgressSink& progress_;
    Batch batch_;
    const Clock& clock_;
    const double start_ = clock_();
    double lastProgress_ = start_;

    ScanReport report_;
    std::optional<UncountedTree> uncounted_;
    HardLinks hardLinks_;
    std::map<std::string, bool> unreadable_;  // whether access was refused
};

FileNumber identify(const std::string& root, const TreeSource& trees) {
    try {
        return trees.identify(root);
    } catch (const std::system_error&) {
        throw ScanError(ScanError::Reason::missing);
    }
}

/// The folder at the root, when it can be listed.
FileNumber listed(const std::string& root, const TreeSource& trees) {
    static_cast<void>(identify(root, trees));
    try {
        trees.list(root);
    } catch (const std::system_error& error) {
        throw rootError(isPermissionError(error));
    }
    return identify(root, trees);  // again: listing a folder may be what mounts it
}

void throwIfSet(const CancellationFlag& cancel) {
    if (cancel.isSet()) throw Cancelled();
}

}  // namespace

bool isPermissionError(const std::exception& error) {
    const auto* system = dynamic_cast<const std::system_error*>(&error);
    if (system != nullptr && isRefusal(system->code().value())) return true;
    try {
        std::rethrow_if_nested(error);
    } catch (const std::exception& nested) {
        return isPermissionError(nested);
    } catch (...) {
        return false;
    }
    return false;
}

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

ScanReport FolderScanner::scan(const std::string& root, const ScanRules& rules,
                               const CancellationFlag& cancel, const ProgressSink& progress,
                               const EntrySink& sink) const {
    const FileNumber before = listed(root, trees_);
    const IdleIoPriority gentle;
    const auto reader = trees_.open(root);
    Count count(rules, progress, sink, clock_);
    std::int64_t entries = 0;
    while (const TreeEvent* event = reader->next()) {
        if (++entries % entriesPerCancellationLook == 0) throwIfSet(cancel);
        count.take(*event, *reader);
    }
    throwIfSet(cancel);
    // Another folder, or none, is there now: what was seen says nothing about this location.
    if (identify(root, trees_) != before) throw ScanError(ScanError::Reason::missing);
    return count.finish();
}

}  // namespace brindle
