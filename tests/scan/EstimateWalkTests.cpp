#include "scan/EstimateWalk.h"
#include "scan/FolderScanner.h"
#include "support/FakeTree.h"

#include <algorithm>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <random>
#include <tuple>

namespace brindle {

// Shown by a failing test.
void PrintTo(const EstimateRow& row, std::ostream* out) {
    *out << row.day.text() << " " << row.folder << " | " << row.name << " | " << row.totals.bytes << " in "
         << row.totals.files;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr LocalDay firstDay{2026, 3, 1};
constexpr LocalDay lastDay{2026, 3, 5};

struct Estimated {
    std::vector<EstimateRow> singles;
    std::vector<EstimateRow> groups;  // parts of one day and folder summed, by day and folder
    std::size_t largestHandOver = 0;
};

/// Sums what is handed over, as the store does.
class Groups {
public:
    void add(std::span<const EstimateRow> part) {
        for (const EstimateRow& row : part) {
            auto [at, isNew] = rows_.try_emplace({row.day, row.folder}, row);
            if (isNew) continue;
            at->second.totals += row.totals;
            at->second.name.clear();
        }
    }
    [[nodiscard]] std::vector<EstimateRow> all() const {
        std::vector<EstimateRow> rows;
        for (const auto& [key, row] : rows_) rows.push_back(row);
        return rows;
    }

private:
    std::map<std::pair<LocalDay, std::string>, EstimateRow> rows_;
};

class EstimateWalkTest : public testing::Test {
protected:
    [[nodiscard]] UnixTime at(int day, double hour = 12) const {
        return calendar.time({2026, 3, day}) + hour * 3600;
    }

    [[nodiscard]] Estimated estimate(std::span<const ScanEntry> files) const {
        Estimated result;
        Groups groups;
        const EstimateGroupSink sink = [&](std::span<const EstimateRow> part) {
            groups.add(part);
            result.largestHandOver = std::max(result.largestHandOver, part.size());
        };
        EstimateGrouper grouper(EstimateSpan(firstDay, lastDay, calendar), sink);
        for (std::size_t i = 0; i < files.size(); i += scanBatchLimit)
            grouper.add(files.subspan(i, std::min(scanBatchLimit, files.size() - i)));
        result.singles = grouper.finish();
        result.groups = groups.all();
        return result;
    }

    static EstimateRow row(int day, std::string folder, std::string name, std::int64_t bytes,
                           std::int64_t files = 1) {
        return {{2026, 3, day}, std::move(folder), std::move(name), {bytes, files}};
    }

    /// So many files of one byte on the span's first day.
    [[nodiscard]] std::vector<ScanEntry> filler(int count) const {
        std::vector<ScanEntry> files;
        for (int i = 0; i < count; ++i) files.push_back({fmt::format("filler/{:05}", i), 1, at(1)});
        return files;
    }

    Calendar calendar{"en_US", "Europe/Berlin"};
};

TEST_F(EstimateWalkTest, TheSpanHoldsItsFirstInstantAndNotItsEnd) {
    const UnixTime start = at(1, 0);
    const UnixTime end = at(6, 0);
    const std::vector<ScanEntry> files{
        {"before", 1, start - 0.001}, {"at start", 2, start},         {"day before", 3, at(3, 0) - 0.001},
        {"at midnight", 4, at(3, 0)}, {"before end", 5, end - 0.001}, {"at end", 6, end},
        {"long ago", 7, -1e12},       {"far ahead", 8, 1e12},         {"empty", 0, at(2)}};
    EXPECT_THAT(estimate(files).singles,
                ElementsAre(row(5, "", "before end", 5), row(3, "", "at midnight", 4),
                            row(2, "", "day before", 3), row(1, "", "at start", 2)));
    EXPECT_THAT(estimate(files).groups, IsEmpty());
}

TEST_F(EstimateWalkTest, ASpanThatEndsBeforeItBeginsHasNoDay) {
    const EstimateSpan span({2026, 3, 2}, {2026, 3, 1}, calendar);
    EXPECT_TRUE(span.isEmpty());
    EXPECT_EQ(span.dayOf(at(1)), std::nullopt);
    EXPECT_FALSE(EstimateSpan(firstDay, firstDay, calendar).isEmpty());
}

// The table of day starts must say what the calendar says, also where days have 23 or 25 hours, where they
// begin at 01:00 or twice, and where a whole day is missing.
TEST_F(EstimateWalkTest, TheDayOfATimeIsTheCalendars) {
    const std::vector<std::pair<const char*, LocalDay>> places{
        {"Europe/Berlin", {2026, 3, 29}},      {"Europe/Berlin", {2026, 10, 25}},
        {"America/Havana", {2026, 3, 8}},      {"America/Havana", {2026, 11, 1}},
        {"America/Santiago", {2026, 9, 6}},    {"Atlantic/Azores", {2026, 10, 25}},
        {"Pacific/Apia", {2011, 12, 30}},      {"Pacific/Kwajalein", {1993, 8, 21}},
        {"Australia/Lord_Howe", {2026, 4, 5}}, {"Africa/Cairo", {2026, 4, 24}}};
    for (const auto& [zone, middle] : places) {
        const Calendar there("en_US", zone);
        const LocalDay first = there.addingDays(middle, -2);
        const LocalDay last = there.addingDays(middle, 2);
        const EstimateSpan span(first, last, there);
        const UnixTime noon = there.time(middle, 12);
        for (UnixTime at = noon - 4 * 86'400; at < noon + 4 * 86'400; at += 600) {
            const LocalDay day = there.day(at);
            const auto expected = day >= first && day <= last ? std::optional(day) : std::nullopt;
            ASSERT_EQ(span.dayOf(at), expected) << zone << " " << day.text() << " " << at;
        }
    }
}

TEST_F(EstimateWalkTest, UpToTheLimitEveryFileIsARowBeyondItOnlyTheLargeOnes) {
    std::vector<ScanEntry> files = filler(1997);
    files.push_back({"a/b/small", largeFileBytes - 1, at(2)});
    files.push_back({"large", largeFileBytes, at(2)});
    files.push_back({"a/b/c/larger", largeFileBytes + 1, at(3)});
    EXPECT_EQ(estimate(files).singles.size(), 2000U);
    EXPECT_THAT(estimate(files).groups, IsEmpty());

    files.push_back({"a/b/too many", 1, at(5)});
    const Estimated grouped = estimate(files);
    EXPECT_THAT(grouped.singles, ElementsAre(row(3, "a/b/c", "larger", largeFileBytes + 1),
                                             row(2, "", "large", largeFileBytes)));
    EXPECT_THAT(grouped.groups,
                ElementsAre(row(1, "filler", "", 1997, 1997), row(2, "a/b", "small", largeFileBytes - 1),
                            row(5, "a/b", "too many", 1)));
}

TEST_F(EstimateWalkTest, TheSmallestOfTooManyLargeFilesJoinTheirGroups) {
    std::vector<ScanEntry> files{{"a/small", 5, at(1)}};
    // The two smallest, one early and one late in the walk; of equal ones the first by path stays.
    for (int i = 0; i < 2002; ++i)
        files.push_back({fmt::format("a/{:04}", i), largeFileBytes + (i == 7 || i == 2001 ? 0 : 1), at(1)});
    const Estimated result = estimate(files);
    EXPECT_EQ(result.singles.size(), singleEstimateLimit);
    EXPECT_THAT(result.groups, ElementsAre(row(1, "a", "", 5 + 2 * largeFileBytes, 3)));
    files[8].size += 1;
    EXPECT_EQ(estimate(files).singles.back().name, "1999");
}

// Folders and days at random against the rule in its plainest form.
TEST_F(EstimateWalkTest, RandomFilesAreGroupedAsThePlainRuleSays) {
    std::mt19937 random(20260307);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (const int count : {0, 1, 1999, 2000, 2001, 9'000, 40'000}) {
        std::vector<ScanEntry> files;
        std::vector<std::pair<LocalDay, ScanEntry>> inSpan;
        for (int i = 0; i < count; ++i) {
            std::string path;
            for (int depth = below(4); depth > 0; --depth) path += fmt::format("{}/", below(20));
            const std::int64_t size = below(4) == 0 ? largeFileBytes - 2'000 + below(4'000) : below(50);
            files.push_back({path + fmt::format("{:x}", i), size, at(0, 0) + below(7 * 24) * 3600.0});
            const LocalDay day = calendar.day(files.back().created);
            if (size > 0 && day >= firstDay && day <= lastDay) inSpan.emplace_back(day, files.back());
        }
        std::ranges::sort(inSpan, [](const auto& a, const auto& b) { return a.second.size > b.second.size; });

        Groups groups;
        std::vector<std::int64_t> sizes;
        for (const auto& [day, file] : inSpan) {
            const bool isSingle = inSpan.size() <= singleEstimateLimit ||
                                  (file.size >= largeFileBytes && sizes.size() < singleEstimateLimit);
            if (isSingle) {
                sizes.push_back(file.size);
                continue;
            }
            const auto slash = file.relativePath.rfind('/');
            const bool isInRoot = slash == std::string::npos;
            groups.add(
                std::vector<EstimateRow>{{day,
                                          isInRoot ? "" : file.relativePath.substr(0, slash),
                                          isInRoot ? file.relativePath : file.relativePath.substr(slash + 1),
                                          {file.size, 1}}});
        }
        const Estimated result = estimate(files);
        std::vector<std::int64_t> found;
        EstimateTotals total;
        for (const EstimateRow& row : result.singles) {
            EXPECT_EQ(row.totals.files, 1);
            found.push_back(row.totals.bytes);
            total += row.totals;
        }
        EXPECT_EQ(found, sizes) << count;
        for (const EstimateRow& row : result.groups) {
            EXPECT_EQ(row.name.empty(), row.totals.files > 1);
            total += row.totals;
        }
        std::int64_t bytes = 0;
        for (const auto& [day, file] : inSpan) bytes += file.size;
        EXPECT_EQ(total, (EstimateTotals{bytes, static_cast<std::int64_t>(inSpan.size())}));
        // Which of the files of one size is a row of its own is not the plain rule's to say.
        if (sizes.size() < singleEstimateLimit || inSpan.size() <= singleEstimateLimit) {
            EXPECT_EQ(result.groups, groups.all()) << count;
        }
    }
}

TEST_F(EstimateWalkTest, GroupsAreHandedOverBeforeTheyGrowTooMany) {
    std::vector<ScanEntry> files;
    for (int i = 0; i < 60'000; ++i) files.push_back({fmt::format("{}/file", i), 1, at(1 + i % 5)});
    const Estimated result = estimate(files);
    EXPECT_EQ(result.groups.size(), files.size());
    EXPECT_LE(result.largestHandOver, 8192 + scanBatchLimit + singleEstimateLimit);
}

TEST_F(EstimateWalkTest, WhatTheCheckDoesNotTrackIsNotEstimated) {
    FakeTree tree;
    const auto created = [this](std::int64_t size) {
        return EntryStatus{.size = size, .links = 1, .created = at(2)};
    };
    tree.folder("Trash").file("Trash/a", created(1)).endFolder("Trash");
    tree.folder("cache").file("cache/b", created(2)).endFolder("cache");
    tree.other("link").file("mine", created(4));
    const EstimateGroupSink sink = [](auto) { ADD_FAILURE() << "there is nothing to group"; };
    EstimateGrouper grouper(EstimateSpan(firstDay, lastDay, calendar), sink);
    static_cast<void>(FolderScanner(tree).scan(
        "/root", {.excludedPaths = {"cache"}, .uncountedPaths = {"Trash"}}, {}, [](const auto&) {},
        [&](std::span<const ScanEntry> batch) { grouper.add(batch); }));
    EXPECT_THAT(grouper.finish(), ElementsAre(row(2, "", "mine", 4)));
}

}  // namespace
}  // namespace brindle
