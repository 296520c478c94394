#include "analysis/Explorer.h"
#include "analysis/ExplorerCache.h"
#include "model/Packages.h"
#include "support/Rounds.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <ranges>

namespace brindle {
namespace {

using testing::ElementsAre;
using Texts = std::vector<std::string>;

std::vector<std::int64_t> ids(const ChosenChanges& changes) {
    std::vector<std::int64_t> ids;
    for (const FileChange* change : changes) ids.push_back(change->id);
    return ids;
}

ChosenChanges all(const std::vector<FileChange>& changes) {
    return filtered(changes, DirectionFilter::all, TextSearch("", "en"));
}

/// One letter or one number of a name, with the weights that an order of names gives it.
struct Part {
    const char* text;
    int primary;  // numbers by their value, below the letters
    int accent = 0;
    int upperCase = 0;
    const char* folded = text;
};

constexpr Part letters[] = {{"a", 1000},
                            {"A", 1000, 0, 1, "a"},
                            {"\u00e1", 1000, 1, 0, "a"},
                            {"\u00c1", 1000, 1, 1, "a"},
                            {"b", 1001},
                            {"B", 1001, 0, 1, "b"},
                            {"e", 1002},
                            {"e\u0301", 1002, 1, 0, "e"}};
constexpr Part numbers[] = {{"2", 2}, {"02", 2}, {"10", 10}, {"9", 9}};

/// A change, and what the slow reference knows of its name.
struct Known {
    FileChange change;
    std::string folded;
    std::array<std::vector<int>, 3> weights;
};

class RandomChanges {
public:
    explicit RandomChanges(std::uint64_t seed) : random_(seed) {}

    std::vector<Known> make(std::size_t count) {
        std::vector<Known> all(count);
        for (std::size_t i = 0; i < count; ++i) {
            Known& one = all[i];
            one.change.id = static_cast<std::int64_t>(i);
            one.change.locationID.rawValue = oneOf(Texts{"a", "b"});
            // A folder met before may share its components, or merely equal them.
            one.change.folder = i > 0 && below(2) == 0 ? all[below(i)].change.folder : folder();
            one.change.byteDelta = static_cast<std::int64_t>(below(7)) - 3;
            one.change.observedAt = static_cast<UnixTime>(below(3));
            one.change.fileCount = 1 + static_cast<std::int64_t>(below(2));
            for (std::size_t part = below(4); part > 0; --part) {
                append(one, oneOf(letters));
                if (below(2) == 0) append(one, oneOf(numbers));
            }
        }
        std::ranges::shuffle(all, random_);
        return all;
    }

    FolderPath folder() {
        Texts components(below(4));
        for (std::string& component : components)
            component = oneOf(Texts{"x", "X", "\u00c1lbum", "B.photoslibrary", "deep"});
        return components;
    }

    std::size_t below(std::size_t end) { return random_() % end; }

    template <class Range>
    std::ranges::range_value_t<Range> oneOf(const Range& range) {
        return std::data(range)[below(std::size(range))];
    }

private:
    static void append(Known& one, const Part& part) {
        one.change.name += part.text;
        one.folded += part.folded;
        one.weights[0].push_back(part.primary);
        one.weights[1].push_back(part.accent);
        one.weights[2].push_back(part.upperCase);
    }

    std::mt19937_64 random_;
};

std::string foldedByHand(std::string text) {
    for (auto at = text.find("\u00c1"); at != std::string::npos; at = text.find("\u00c1"))
        text.replace(at, 2, "a");
    std::ranges::transform(text, text.begin(), [](char c) { return c == 'X' || c == 'B' ? c + 32 : c; });
    return text;
}

std::vector<Known> slowlyFiltered(const std::vector<Known>& changes, DirectionFilter direction,
                                  const std::string& search) {
    std::vector<Known> kept;
    for (const Known& one : changes) {
        if (direction == DirectionFilter::added && one.change.byteDelta <= 0) continue;
        if (direction == DirectionFilter::freed && one.change.byteDelta >= 0) continue;
        bool isFound = one.folded.find(search) != std::string::npos;
        for (const std::string& component : one.change.folder)
            isFound = isFound || foldedByHand(component).find(search) != std::string::npos;
        if (isFound) kept.push_back(one);
    }
    return kept;
}

bool liesIn(const FileChange& change, const std::optional<FolderRef>& folder) {
    if (!folder) return true;
    const Texts path(change.folder.begin(), change.folder.end());
    const Texts above(folder->components.begin(), folder->components.end());
    return change.locationID == folder->locationID && path.size() >= above.size() &&
           Texts(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(above.size())) == above;
}

std::vector<std::int64_t> slowlySorted(std::vector<Known> changes, FileSort sort) {
    std::ranges::sort(changes, [&](const Known& a, const Known& b) {
        const auto& [left, right] = std::tie(a.change, b.change);
        if (sort == FileSort::largest && std::abs(left.byteDelta) != std::abs(right.byteDelta))
            return std::abs(left.byteDelta) > std::abs(right.byteDelta);
        if (sort == FileSort::newest && left.observedAt != right.observedAt)
            return left.observedAt > right.observedAt;
        if (sort == FileSort::name && a.weights != b.weights) return a.weights < b.weights;
        return left.id < right.id;
    });
    std::vector<std::int64_t> ids;
    for (const Known& one : changes) ids.push_back(one.change.id);
    return ids;
}

struct SlowLevel {
    std::vector<FolderSummary> folders;
    std::vector<Known> files;
    ChangeTotals totals;
};

SlowLevel slowLevel(const std::vector<Known>& changes, const std::optional<FolderRef>& folder) {
    const std::size_t depth = folder ? folder->components.size() : 0;
    std::map<FolderRef, ChangeTotals> children;
    SlowLevel level;
    for (const Known& one : changes) {
        if (!liesIn(one.change, folder)) continue;
        level.totals.add(one.change);
        Texts credited;
        for (const std::string& component : one.change.folder) {
            if (!folder || credited.size() == depth + 1) break;
            credited.push_back(component);
            if (isPackage(component)) break;
        }
        if (folder && credited.size() <= depth)
            level.files.push_back(one);
        else
            children[{one.change.locationID, credited}].add(one.change);
    }
    for (const auto& [ref, totals] : children) level.folders.push_back({ref, totals});
    std::ranges::stable_sort(level.folders, std::ranges::greater(),
                             [](const FolderSummary& one) { return one.totals.added + one.totals.freed; });
    return level;
}

TEST(Explorer, GivesWhatASlowReferenceGivesForRandomChanges) {
    const auto seed = testSeed();
    SCOPED_TRACE(seed);
    RandomChanges random(seed);
    for (int round = 0; round < testRounds(60); ++round) {
        const auto known = random.make(1 + random.below(300));
        std::vector<FileChange> changes;
        for (const Known& one : known) changes.push_back(one.change);
        const FileChange& any = random.oneOf(changes);
        const std::optional<FolderRef> folders[] = {
            std::nullopt, FolderRef{{"a"}, {}}, FolderRef{{"b"}, random.folder()},
            FolderRef{any.locationID, any.folder.first(random.below(any.folder.size() + 1))}};
        for (const auto direction : {DirectionFilter::all, DirectionFilter::added, DirectionFilter::freed})
            for (const auto& [search, folded] :
                 {std::pair{"", ""}, {" \u00c1", "a"}, {"A2", "a2"}, {"X\n", "x"}}) {
                const auto kept = filtered(changes, direction, TextSearch(search, "en"));
                const auto expected = slowlyFiltered(known, direction, folded);
                ASSERT_EQ(kept.size(), expected.size()) << search;
                for (std::size_t i = 0; i < kept.size(); ++i) ASSERT_EQ(kept[i]->id, expected[i].change.id);
                for (const auto& folder : folders) {
                    const ExplorerLevel level = levelOf(kept, folder);
                    const SlowLevel slow = slowLevel(expected, folder);
                    ASSERT_EQ(level.folders, slow.folders);
                    ASSERT_EQ(ids(level.files), slowlySorted(slow.files, FileSort::largest));
                    ASSERT_EQ(level.totals, slow.totals);
                    auto inside = expected;
                    std::erase_if(inside, [&](const Known& one) { return !liesIn(one.change, folder); });
                    for (const auto sort : {FileSort::largest, FileSort::newest, FileSort::name})
                        ASSERT_EQ(ids(filesIn(kept, folder, sort, "en")), slowlySorted(inside, sort))
                            << rawText(sort);
                }
            }
    }
}

TEST(Explorer, APackageIsOneFolderAndAllInItAreItsFiles) {
    const std::vector<FileChange> changes{
        {.id = 1, .locationID = {"a"}, .folder = {"P.xcodeproj", "xcuserdata", "u"}, .byteDelta = 5},
        {.id = 2, .locationID = {"a"}, .folder = {"P.xcodeproj"}, .byteDelta = -6}};
    const auto root = levelOf(all(changes), FolderRef{{"a"}, {}});
    EXPECT_THAT(root.folders, ElementsAre(FolderSummary{{{"a"}, {"P.xcodeproj"}}, {5, 6, 2}}));
    EXPECT_TRUE(root.files.empty());
    const auto package = levelOf(all(changes), FolderRef{{"a"}, {"P.xcodeproj"}});
    EXPECT_TRUE(package.folders.empty());
    EXPECT_THAT(ids(package.files), ElementsAre(2, 1));
}

TEST(Explorer, NamesAreInTheOrderOfAFileBrowser) {
    const std::pair<const char*, Texts> cases[] = {
        {"en", {"File 1", "file 2", "File 2", "file 10", "file 10 b"}},
        {"en", {"", "007", "42", "a", "\u00e4", "az", "b", "IMG_9.heic", "IMG_10.heic", "img_11.heic"}},
        {"en", {"7 smaller", "shared by twelve letters a", "shared by twelve letters B"}},
        {"en",
         {"5\uff05",
          "cut\xff"
          "a",
          "cut\xfe"
          "b",
          "z"}},
        {"de_DE", {"a", "\u00e4", "b", "z"}},
        {"sv_SE", {"a", "b", "z", "\u00e4"}},  // its alphabet ends with \u00e4
        {"cs_CZ", {"c", "cz", "h", "ch", "i"}},
    };
    for (const auto& [locale, names] : cases) {
        std::vector<FileChange> changes;
        for (std::size_t i = names.size(); i-- > 0;)
            changes.push_back({.id = static_cast<std::int64_t>(i), .name = names[i]});
        Texts sorted;
        for (const FileChange* change : filesIn(all(changes), {}, FileSort::name, locale))
            sorted.push_back(change->name);
        EXPECT_EQ(sorted, names) << locale;
    }
}

TEST(Explorer, APageThatIsNotThereIsTheNearestOne) {
    const auto shown = [](std::size_t files, int number) {
        const ChosenChanges list(files);
        const FilePage page = filePage(list, number);
        return std::vector<std::size_t>{
            files == 0 ? 0 : static_cast<std::size_t>(page.files.data() - list.data()), page.files.size(),
            page.number, page.pages};
    };
    EXPECT_THAT(shown(0, 3), ElementsAre(0, 0, 0, 1));
    EXPECT_THAT(shown(200, 1), ElementsAre(0, 200, 0, 1));
    EXPECT_THAT(shown(450, 1), ElementsAre(200, 200, 1, 3));
    EXPECT_THAT(shown(450, 99), ElementsAre(400, 50, 2, 3));
    EXPECT_THAT(shown(450, -1), ElementsAre(0, 200, 0, 3));
}

TEST(ExplorerCache, WorksOnceForEachListAndState) {
    const std::vector<FileChange> changes{{.id = 1, .locationID = {"a"}, .name = "one", .byteDelta = 5},
                                          {.id = 2, .locationID = {"b"}, .name = "two", .byteDelta = -7},
                                          {.id = 3, .locationID = {"b"}, .name = "two", .byteDelta = 0}};
    ExplorerCache cache("en");
    ExplorerState state;
    EXPECT_EQ(cache.output(changes, 1, state).level.folders.size(), 2U);
    // Without a look at the list: there is none.
    EXPECT_EQ(cache.output({}, 1, state).level.folders.size(), 2U);
    EXPECT_EQ(cache.output({}, 2, state).level.folders.size(), 0U);

    state = {.mode = ExplorerMode::files, .folder = FolderRef{{"a"}, {}}, .search = "O"};
    const auto& files = cache.output(changes, 2, state);
    EXPECT_THAT(ids(files.files), ElementsAre(1));
    EXPECT_EQ(files.filteredTotals, (ChangeTotals{5, 7, 3}));  // the folder is no filter
    for (const auto change :
         {+[](ExplorerState& s) { s.mode = ExplorerMode::folders; },
          +[](ExplorerState& s) {
              s.folder = FolderRef{{"b"}, {}};
          },
          +[](ExplorerState& s) { s.direction = DirectionFilter::freed; },
          +[](ExplorerState& s) { s.search = "x"; }, +[](ExplorerState& s) { s.sort = FileSort::name; },
          +[](ExplorerState& s) { s.page = 1; }}) {
        static_cast<void>(cache.output(changes, 2, state));
        ExplorerState other = state;
        change(other);
        EXPECT_EQ(cache.output({}, 2, other).filteredTotals, ChangeTotals{});  // worked out anew, of nothing
    }
}

}  // namespace
}  // namespace brindle
