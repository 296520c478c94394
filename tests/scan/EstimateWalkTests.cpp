#include "scan/EstimateWalk.h"

#include <algorithm>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <utility>

namespace brindle {
namespace {

using testing::ElementsAre;

constexpr LocalDay firstDay{2026, 3, 1};
constexpr LocalDay lastDay{2026, 3, 5};

/// The parts of one day and folder, summed as the store does it.
using Groups = std::map<std::pair<LocalDay, std::string>, EstimateRow>;

void addTo(Groups& groups, const EstimateRow& row) {
    const auto [at, isNew] = groups.try_emplace({row.day, row.folder}, row);
    if (isNew) return;
    at->second.totals += row.totals;
    at->second.name.clear();
}

struct Estimated {
    std::vector<EstimateRow> singles;
    Groups groups;
    std::size_t largestHandOver = 0;
};

class EstimateWalkTest : public testing::Test {
protected:
    [[nodiscard]] UnixTime at(int day, double hour = 12) const {
        return calendar.time({2026, 3, day}) + hour * 3600;
    }

    [[nodiscard]] Estimated estimate(std::span<const ScanEntry> files) const {
        Estimated result;
        const EstimateGroupSink sink = [&](std::span<const EstimateRow> part) {
            for (const EstimateRow& row : part) addTo(result.groups, row);
            result.largestHandOver = std::max(result.largestHandOver, part.size());
        };
        EstimateGrouper grouper(EstimateSpan(firstDay, lastDay, calendar), sink);
        for (std::size_t i = 0; i < files.size(); i += scanBatchLimit)
            grouper.add(files.subspan(i, std::min(scanBatchLimit, files.size() - i)));
        result.singles = grouper.finish();
        return result;
    }

    Calendar calendar{"en_US", "Europe/Berlin"};
};

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

TEST_F(EstimateWalkTest, TheSmallestOfTooManyLargeFilesJoinTheirGroups) {
    std::vector<ScanEntry> files{{"a/small", 5, at(1)}};
    // The two smallest, one early and one late in the walk; of equal ones the first by path stays.
    for (int i = 0; i < 2002; ++i)
        files.push_back({fmt::format("a/{:04}", i), largeFileBytes + (i == 7 || i == 2001 ? 0 : 1), at(1)});
    const Estimated result = estimate(files);
    EXPECT_EQ(result.singles.size(), singleEstimateLimit);
    EXPECT_THAT(result.groups, ElementsAre(testing::Pair(
                                   testing::_, EstimateRow{firstDay, "a", "", {5 + 2 * largeFileBytes, 3}})));
    files[8].size += 1;
    EXPECT_EQ(estimate(files).singles.back().name, "1999");
}

// Folders, days and sizes at random against the rule in its plainest form. Which of several files of one size
// is a row of its own is not the plain rule's to say.
TEST_F(EstimateWalkTest, RandomFilesAreGroupedAsThePlainRuleSays) {
    std::mt19937 random(20260307);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (const std::size_t count : {0U, 1U, 1999U, 2000U, 2001U, 9'000U, 40'000U}) {
        std::vector<ScanEntry> files;
        std::vector<EstimateRow> inSpan;
        while (inSpan.size() < count) {
            std::string folder;
            for (int depth = below(4); depth > 0; --depth) folder += fmt::format("{}/", below(20));
            const auto name = fmt::format("{:x}", files.size());
            const std::int64_t size = below(4) == 0 ? largeFileBytes - 1 + below(3) : below(50);
            files.push_back({folder + name, size, at(0, 0) + below(7 * 24) * 3600.0});
            const LocalDay day = calendar.day(files.back().created);
            if (!folder.empty()) folder.pop_back();
            if (size > 0 && day >= firstDay && day <= lastDay)
                inSpan.push_back({day, folder, name, {size, 1}});
        }
        const auto bytes = [](const EstimateRow& row) { return row.totals.bytes; };
        std::ranges::stable_sort(inSpan, std::greater(), bytes);

        Groups groups;
        std::vector<std::int64_t> singles;
        EstimateTotals total;
        for (const EstimateRow& file : inSpan) {
            total += file.totals;
            const bool isSingle = count <= singleEstimateLimit ||
                                  (bytes(file) >= largeFileBytes && singles.size() < singleEstimateLimit);
            if (isSingle)
                singles.push_back(bytes(file));
            else
                addTo(groups, file);
        }
        const Estimated result = estimate(files);
        std::vector<std::int64_t> found;
        for (const EstimateRow& row : result.singles) found.push_back(bytes(row));
        EXPECT_EQ(found, singles) << count;
        if (singles.size() < singleEstimateLimit || count <= singleEstimateLimit) {
            EXPECT_EQ(result.groups, groups) << count;
        }
        EstimateTotals told;
        for (const EstimateRow& row : result.singles) told += row.totals;
        for (const auto& [key, row] : result.groups) told += row.totals;
        EXPECT_EQ(told, total) << count;
    }
}

TEST_F(EstimateWalkTest, GroupsAreHandedOverBeforeTheyGrowTooMany) {
    std::vector<ScanEntry> files;
    for (int i = 0; i < 60'000; ++i) files.push_back({fmt::format("{}/file", i), 1, at(1 + i % 5)});
    const Estimated result = estimate(files);
    EXPECT_EQ(result.groups.size(), files.size());
    EXPECT_LE(result.largestHandOver, 8192 + scanBatchLimit + singleEstimateLimit);
}

}  // namespace
}  // namespace brindle
