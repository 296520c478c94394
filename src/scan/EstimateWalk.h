#pragma once

#include "model/Calendar.h"
#include "model/Estimates.h"
#include "model/Walk.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brindle {

/// The days that estimates are made for, and when each begins: a look-up here costs a fraction of asking a
/// calendar, which every file of a tree would have to do.
class EstimateSpan {
public:
    /// From `first` through `last`; no day at all when `last` is earlier.
    EstimateSpan(const LocalDay& first, const LocalDay& last, const Calendar& calendar);

    [[nodiscard]] bool isEmpty() const { return days_.empty(); }

    /// The day of the point in time; nothing outside the span.
    [[nodiscard]] std::optional<LocalDay> dayOf(UnixTime at) const;

private:
    std::vector<LocalDay> days_;
    std::vector<UnixTime> starts_;  // of the days, and of the day after the last one
};

/// From this size on a file is large: it is a row of its own, unless there are too many of them.
inline constexpr std::int64_t largeFileBytes = 10'000'000;

/// The most rows of single files.
inline constexpr std::size_t singleEstimateLimit = 2000;

/// Sorts the files of one walk by the day on which they were created. While at most singleEstimateLimit
/// files fall into the span, each is a row of its own. Beyond that only the largest of the large files are,
/// and all others are summed by day and folder.
///
/// Memory: for the single files and some thousand groups, however many files there are.
class EstimateGrouper {
public:
    /// `sink` outlives the grouper.
    EstimateGrouper(EstimateSpan span, const EstimateGroupSink& sink) : span_(std::move(span)), sink_(sink) {}

    /// Throws what the sink throws. Files without contents are left out.
    void add(std::span<const ScanEntry> batch);

    /// Hands over what is left of the groups and returns the single files, largest first.
    [[nodiscard]] std::vector<EstimateRow> finish();

private:
    /// The files of one folder created on one day.
    struct Key {
        LocalDay day;
        std::string folder;
    };
    struct KeyView {
        LocalDay day;
        std::string_view folder;

        KeyView(const Key& key) : day(key.day), folder(key.folder) {}
        KeyView(const LocalDay& onDay, std::string_view inFolder) : day(onDay), folder(inFolder) {}
        bool operator==(const KeyView&) const = default;
    };
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(const KeyView& key) const;
    };
    struct KeyEqual {
        using is_transparent = void;
        bool operator()(const KeyView& a, const KeyView& b) const { return a == b; }
    };
    struct Group {
        EstimateTotals totals;
        std::string only;  // the name of the single file, while there is just one
    };

    void addFile(const LocalDay& day, std::string_view path, std::int64_t size);
    void addSingle(EstimateRow row);
    void addToGroup(const KeyView& key, std::string_view name, std::int64_t size);
    void groupSmallFiles();
    void handOver();

    EstimateSpan span_;
    const EstimateGroupSink& sink_;
    bool isGrouping_ = false;           // more than singleEstimateLimit files were seen
    std::vector<EstimateRow> singles_;  // once isGrouping_: a heap of large files, the smallest on top
    std::unordered_map<Key, Group, KeyHash, KeyEqual> groups_;
};

}  // namespace brindle
