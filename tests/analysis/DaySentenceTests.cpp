#include "analysis/DaySentence.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace brindle {
namespace {

constexpr std::int64_t gigabyte = 1'000'000'000;

struct SentenceCase {
    const char* name;
    std::vector<FolderSummary> folders;
    std::size_t locations;
    const char* sentence;
};

std::string caseName(const testing::TestParamInfo<SentenceCase>& info) {
    return info.param.name;
}

FolderSummary came(FolderPath folder, double gigabytes, const char* location = "home") {
    return {{{location}, std::move(folder)}, {static_cast<std::int64_t>(gigabytes * gigabyte), 0, 1}};
}

FolderSummary went(FolderPath folder, double gigabytes) {
    return {{{"home"}, std::move(folder)}, {0, static_cast<std::int64_t>(gigabytes * gigabyte), 1}};
}

class DaySentence : public testing::TestWithParam<SentenceCase> {};

TEST_P(DaySentence, NamesTheFewestFoldersThatExplainIt) {
    const std::vector<TrackedLocation> all{{.id = {"home"}, .name = "Home"},
                                           {.id = {"disk"}, .name = "Disk"}};
    EXPECT_EQ(changeSentence(GetParam().folders, std::span(all).first(GetParam().locations),
                             ChangeSource::measured),
              GetParam().sentence);
}

INSTANTIATE_TEST_SUITE_P(
    Sentence, DaySentence,
    testing::Values(
        SentenceCase{"TwoPlaces",
                     {came({"Movies", "Raw"}, 8), came({"Library", "Caches"}, 3), came({"Documents"}, 1.4)},
                     1,
                     "12.4 GB came, most of it in Movies/Raw and Library/Caches."},
        SentenceCase{"OnePlaceInOneLocationOfTwo",
                     {came({"Footage", "A"}, 2, "disk")},
                     2,
                     "2.0 GB came, all of it in Disk/Footage/A."},
        // The folder that all of it passes through says less than the two below it.
        SentenceCase{"PassedThrough",
                     {came({"home", "ann", "Mail"}, 5), came({"home", "ann", "Games"}, 5)},
                     1,
                     "10.0 GB came, all of it in home/ann/Games and home/ann/Mail."},
        SentenceCase{"FourBelowOne",
                     {came({"a", "1"}, 1), came({"a", "2"}, 1), came({"a", "3"}, 1), came({"a", "4"}, 1)},
                     1,
                     "4.0 GB came, all of it in a."},
        SentenceCase{"Everywhere",
                     {came({"1"}, 1), came({"2"}, 1), came({"3"}, 1), came({"4"}, 1), came({"5"}, 1)},
                     1,
                     "5.0 GB came, spread over several folders."},
        SentenceCase{
            "DirectlyInTheRoot", {came({}, 9), came({"a"}, 1)}, 1, "10.0 GB came, most of it in Home."},
        SentenceCase{"BothWays",
                     {came({"In"}, 6), went({"Out"}, 3)},
                     1,
                     "6.0 GB came and 3.0 GB went, all of it in In and Out."},
        // What hardly counts is not told, and does not decide where the change lies.
        SentenceCase{"HardlyAnythingWent",
                     {came({"In"}, 8), came({"Else"}, 2), went({"Out"}, 0.4)},
                     1,
                     "10.0 GB came, most of it in In."},
        SentenceCase{"OnlyEmptyFiles", {came({"a"}, 0)}, 1, "Nothing came or went."}),
    caseName);

std::int64_t volume(const ChangeTotals& totals) {
    return totals.volume();
}

/// Everything that lies in the folder, added up without a tree.
std::int64_t bytesIn(const FolderRef& ref, const std::vector<FolderSummary>& folders) {
    std::int64_t sum = 0;
    for (const FolderSummary& folder : folders) {
        const FolderPath& path = folder.ref.components;
        if (folder.ref.locationID == ref.locationID && path.size() >= ref.components.size() &&
            path.first(ref.components.size()) == ref.components)
            sum += folder.totals.volume();
    }
    return sum;
}

bool isInside(const FolderRef& inner, const FolderRef& outer) {
    return inner.components.size() >= outer.components.size() &&
           inner.components.first(outer.components.size()) == outer.components;
}

class RandomExplanation : public testing::Test {
protected:
    void makeFolders() {
        std::map<FolderRef, ChangeTotals> made;
        for (int i = std::uniform_int_distribution(1, 14)(random_); i > 0; --i) {
            std::vector<std::string> path;
            for (int depth = std::uniform_int_distribution(0, 4)(random_); depth > 0; --depth)
                path.emplace_back(1, static_cast<char>('a' + std::uniform_int_distribution(0, 2)(random_)));
            made[{{"home"}, path}] = {std::uniform_int_distribution(1, 100)(random_), 0, 1};
        }
        folders_.clear();
        for (const auto& [ref, totals] : made) folders_.push_back({ref, totals});
        std::ranges::shuffle(folders_, random_);
    }

    /// Every folder on the way to one that changed.
    [[nodiscard]] std::vector<FolderRef> candidates() const {
        std::vector<FolderRef> refs;
        for (const FolderSummary& folder : folders_)
            for (std::size_t depth = 0; depth <= folder.ref.components.size(); ++depth)
                refs.push_back({folder.ref.locationID, folder.ref.components.first(depth)});
        std::ranges::sort(refs);
        refs.erase(std::unique(refs.begin(), refs.end()), refs.end());
        return refs;
    }

    [[nodiscard]] bool explain(const std::vector<FolderRef>& refs) const {
        std::int64_t sum = 0;
        for (const FolderRef& ref : refs) sum += bytesIn(ref, folders_);
        return 5 * sum >= 4 * bytesIn({{"home"}, {}}, folders_);
    }

    /// Whether some set of `size` candidates below `trunk`, none inside another, explains the change.
    [[nodiscard]] bool existsBelow(const FolderRef& trunk, std::size_t size,
                                   std::vector<FolderRef> chosen = {}, std::size_t from = 0) const {
        if (chosen.size() == size) return explain(chosen);
        const auto all = candidates();
        for (std::size_t i = from; i < all.size(); ++i) {
            if (all[i] == trunk || !isInside(all[i], trunk)) continue;
            if (std::ranges::any_of(chosen, [&](const FolderRef& ref) { return isInside(all[i], ref); }))
                continue;
            chosen.push_back(all[i]);
            if (existsBelow(trunk, size, chosen, i + 1)) return true;
            chosen.pop_back();
        }
        return false;
    }

    std::mt19937 random_{7};
    std::vector<FolderSummary> folders_;
};

TEST_F(RandomExplanation, NoSmallerAndNoNarrowerSetExplains) {
    for (int round = 0; round < 400; ++round) {
        makeFolders();
        const Explanation found = explanationOf(folders_, volume);
        ASSERT_FALSE(found.folders.empty());
        ASSERT_TRUE(explain(found.folders));
        for (const FolderRef& a : found.folders)
            for (const FolderRef& b : found.folders) ASSERT_TRUE(a == b || !isInside(a, b));

        FolderRef trunk{{"home"}, {}};
        for (const FolderRef& ref : candidates())
            if (explain({ref}) && ref.components.size() >= trunk.components.size()) trunk = ref;
        const bool namesTrunk = found.folders == std::vector{trunk};
        const std::size_t smaller = namesTrunk ? 4 : found.folders.size();
        for (std::size_t size = 1; size < smaller; ++size) ASSERT_FALSE(existsBelow(trunk, size));
        if (namesTrunk) continue;
        for (std::size_t i = 0; i < found.folders.size(); ++i)
            for (const FolderRef& narrower : candidates()) {
                if (narrower == found.folders[i] || !isInside(narrower, found.folders[i])) continue;
                auto set = found.folders;
                set[i] = narrower;
                ASSERT_FALSE(explain(set)) << "round " << round;
            }
    }
}

}  // namespace
}  // namespace brindle
