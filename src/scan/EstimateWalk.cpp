#include "scan/EstimateWalk.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <tuple>
#include <utility>

namespace brindle {
namespace {

// What bounds the memory of a walk: a group takes some 300 bytes.
constexpr std::size_t groupsAtOnce = 8192;

/// Whether `a` is rather a row of its own than `b`. Of two files of one size it is the first by path, so that
/// the same tree always gives the same rows.
bool isLarger(const EstimateRow& a, const EstimateRow& b) {
    return std::tie(b.totals.bytes, a.folder, a.name) < std::tie(a.totals.bytes, b.folder, b.name);
}

struct SplitPath {
    std::string_view folder;
    std::string_view name;
};

SplitPath split(std::string_view path) {
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos) return {{}, path};
    return {path.substr(0, slash), path.substr(slash + 1)};
}

}  // namespace

EstimateSpan::EstimateSpan(const LocalDay& first, const LocalDay& last, const Calendar& calendar)
    : days_(calendar.days(first, last)) {
    for (const LocalDay& day : days_) starts_.push_back(calendar.time(day));
    if (!days_.empty()) starts_.push_back(calendar.time(calendar.addingDays(days_.back(), 1)));
}

std::optional<LocalDay> EstimateSpan::dayOf(UnixTime at) const {
    const auto after = std::ranges::upper_bound(starts_, at);
    if (after == starts_.begin() || after == starts_.end()) return {};
    return days_[static_cast<std::size_t>(std::distance(starts_.begin(), after)) - 1];
}

std::size_t EstimateGrouper::KeyHash::operator()(const KeyView& key) const {
    return std::hash<std::string_view>{}(key.folder) * 31 + std::hash<LocalDay>{}(key.day);
}

void EstimateGrouper::add(std::span<const ScanEntry> batch) {
    for (const ScanEntry& file : batch) {
        if (file.size < 1) continue;
        if (const auto day = span_.dayOf(file.created)) addFile(*day, file.relativePath, file.size);
    }
    if (groups_.size() >= groupsAtOnce) handOver();
}

std::vector<EstimateRow> EstimateGrouper::finish() {
    handOver();
    std::ranges::sort(singles_, isLarger);
    return std::move(singles_);
}

void EstimateGrouper::addFile(const LocalDay& day, std::string_view path, std::int64_t size) {
    const auto [folder, name] = split(path);
    if (isGrouping_ && size < largeFileBytes)
        addToGroup({day, folder}, name, size);
    else
        addSingle({.day = day,
                   .folder = std::string(folder),
                   .name = std::string(name),
                   .totals = {.bytes = size, .files = 1}});
}

void EstimateGrouper::addSingle(EstimateRow row) {
    singles_.push_back(std::move(row));
    if (isGrouping_) std::ranges::push_heap(singles_, isLarger);
    if (singles_.size() <= singleEstimateLimit) return;
    if (!isGrouping_) groupSmallFiles();
    if (singles_.size() <= singleEstimateLimit) return;
    std::ranges::pop_heap(singles_, isLarger);
    const EstimateRow& smallest = singles_.back();
    addToGroup({smallest.day, smallest.folder}, smallest.name, smallest.totals.bytes);
    singles_.pop_back();
}

void EstimateGrouper::groupSmallFiles() {
    isGrouping_ = true;
    std::erase_if(singles_, [this](const EstimateRow& file) {
        if (file.totals.bytes >= largeFileBytes) return false;
        addToGroup({file.day, file.folder}, file.name, file.totals.bytes);
        return true;
    });
    std::ranges::make_heap(singles_, isLarger);
}

void EstimateGrouper::addToGroup(const KeyView& key, std::string_view name, std::int64_t size) {
    auto found = groups_.find(key);
    if (found == groups_.end())
        found = groups_.emplace(Key{.day = key.day, .folder = std::string(key.folder)}, Group{}).first;
    Group& group = found->second;
    group.totals += {.bytes = size, .files = 1};
    if (group.totals.files == 1)
        group.only = name;
    else
        group.only.clear();
}

void EstimateGrouper::handOver() {
    if (groups_.empty()) return;
    std::vector<EstimateRow> rows;
    rows.reserve(groups_.size());
    while (!groups_.empty()) {
        auto node = groups_.extract(groups_.begin());
        rows.push_back({.day = node.key().day,
                        .folder = std::move(node.key().folder),
                        .name = std::move(node.mapped().only),
                        .totals = node.mapped().totals});
    }
    sink_(rows);
}

}  // namespace brindle
