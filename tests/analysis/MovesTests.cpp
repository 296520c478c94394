#include "analysis/Moves.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

constexpr UnixTime noon = 1'772'884'800;

/// "- Photos/1.raw 20000", or "~" of a file that changed, in the location "home" at noon; before it may stand
/// "LOCATION@SECONDS ".
FileChange changeOf(std::int64_t id, const std::string& line) {
    FileChange change{.id = id, .locationID = {"home"}, .observedAt = noon};
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (const auto at = word.find('@'); at != word.npos) {
        change.locationID = {word.substr(0, at)};
        change.observedAt += std::stoi(word.substr(at + 1));
        words >> word;
    }
    change.action = word == "+"   ? ChangeAction::added
                    : word == "-" ? ChangeAction::removed
                                  : ChangeAction::grew;
    std::string path;
    words >> path >> change.byteDelta;
    if (word == "-") change.byteDelta = -change.byteDelta;
    Texts components;
    std::istringstream parts(path);
    for (std::string part; std::getline(parts, part, '/');) components.push_back(part);
    change.name = components.back();
    components.pop_back();
    change.folder = components;
    return change;
}

std::vector<FileChange> changesOf(const Texts& lines) {
    std::vector<FileChange> changes;
    for (const std::string& line : lines) changes.push_back(changeOf(std::ssize(changes), line));
    return changes;
}

std::string pathOf(const FolderRef& folder) {
    std::string path = folder.locationID.rawValue == "home" ? "" : folder.locationID.rawValue + ":";
    for (const std::string& component : folder.components) path += component + "/";
    return path;
}

/// "Photos/1.raw > Archive/1.raw" for every pair.
Texts pairsOf(const std::vector<FileChange>& changes) {
    const Moves moves(changes);
    Texts pairs;
    for (const FileChange& change : changes)
        if (const FileChange* other = moves.counterpart(change)) {
            EXPECT_EQ(moves.counterpart(*other), &change);
            if (change.byteDelta < 0)
                pairs.push_back(fmt::format("{}{} > {}{}", pathOf({change.locationID, change.folder}),
                                            change.name, pathOf({other->locationID, other->folder}),
                                            other->name));
        }
    EXPECT_EQ(moves.empty(), pairs.empty());
    EXPECT_EQ(moves.totals().files, std::ssize(pairs));
    return pairs;
}

struct MoveCase {
    const char* name;
    Texts changes;
    Texts pairs;
};

class MovesOf : public testing::TestWithParam<MoveCase> {};

TEST_P(MovesOf, Changes) {
    auto changes = changesOf(GetParam().changes);
    EXPECT_THAT(pairsOf(changes), testing::UnorderedElementsAreArray(GetParam().pairs));
    std::ranges::reverse(changes);
    EXPECT_THAT(pairsOf(changes), testing::UnorderedElementsAreArray(GetParam().pairs));
}

INSTANTIATE_TEST_SUITE_P(
    Single, MovesOf,
    testing::Values(
        MoveCase{"LargeFile", {"- a/x.mov 10000", "+ b/x.mov 10000"}, {"a/x.mov > b/x.mov"}},
        MoveCase{"SmallFileAlone", {"- a/x.txt 9999", "+ b/x.txt 9999"}, {}},
        MoveCase{"AnotherSize", {"- a/x.mov 20000", "+ b/x.mov 20001"}, {}},
        MoveCase{"AnotherName", {"- a/x.mov 20000", "+ a/y.mov 20000"}, {}},
        MoveCase{"OverAnOlderFile", {"- a/x.mov 20000", "~ b/x.mov 20000"}, {}},
        MoveCase{"TwoCopies", {"- a/x.mov 20000", "+ b/x.mov 20000", "+ c/x.mov 20000"}, {}},
        MoveCase{"OneOfTwoCopiesIsLeft", {"- a/x.mov 20000", "- b/x.mov 20000", "+ c/x.mov 20000"}, {}},
        MoveCase{"AnotherCheck", {"home@0 - a/x.mov 20000", "home@60 + b/x.mov 20000"}, {}},
        MoveCase{"OtherLocation",
                 {"home@0 - a/x.mov 20000", "disk@60 + b/x.mov 20000"},
                 {"a/x.mov > disk:b/x.mov"}},
        MoveCase{"OtherLocationMuchLater", {"home@0 - a/x.mov 20000", "disk@300 + b/x.mov 20000"}, {}},
        MoveCase{"OtherLocationInTheNextRun",
                 {"home@0 - a/x.mov 20000", "home@60 ~ c/y 1", "disk@62 + b/x.mov 20000"},
                 {}}),
    [](const auto& one) { return std::string(one.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Folders, MovesOf,
    testing::Values(
        MoveCase{"SmallFilesTogether",
                 {"- a/s/1 10", "- a/s/2 20", "- a/t/3 30", "+ b/c/s/1 10", "+ b/c/s/2 20", "+ b/c/t/3 30"},
                 {"a/s/1 > b/c/s/1", "a/s/2 > b/c/s/2", "a/t/3 > b/c/t/3"}},
        MoveCase{"TwoSmallFiles", {"- a/1 10", "- a/2 20", "+ b/1 10", "+ b/2 20"}, {}},
        MoveCase{"RenamedWithAlikeFilesBelow",
                 {"- a/s/i 5", "- a/t/i 5", "- a/u/i 5", "- a/x 90000", "+ b/s/i 5", "+ b/t/i 5", "+ b/u/i 5",
                  "+ b/x 90000"},
                 {"a/s/i > b/s/i", "a/t/i > b/t/i", "a/u/i > b/u/i", "a/x > b/x"}},
        MoveCase{"PartOfItChangedOrWent",
                 {"- a/s/i 5", "- a/t/i 5", "- a/x 90000", "- a/y 90001", "+ b/s/i 6", "+ b/t/i 5",
                  "+ b/x 90000", "+ b/z 90001"},
                 {"a/x > b/x", "a/t/i > b/t/i"}},
        MoveCase{
            "MonthsOfAlikePictures",
            {"- in/Jan/1 50000", "- in/Jan/2 50000", "- in/Feb/1 50000", "- in/Feb/2 50000",
             "+ out/Jan/1 50000", "+ out/Jan/2 50000", "+ out/Feb/1 50000", "+ out/Feb/2 50000"},
            {"in/Jan/1 > out/Jan/1", "in/Jan/2 > out/Jan/2", "in/Feb/1 > out/Feb/1", "in/Feb/2 > out/Feb/2"}},
        MoveCase{"RenamedMonthsOfAlikePictures",
                 {"- p/01/1 50000", "- p/01/2 50000", "- p/02/1 50000", "- p/02/2 50000", "+ p/Jan/1 50000",
                  "+ p/Jan/2 50000", "+ p/Feb/1 50000", "+ p/Feb/2 50000"},
                 {}},
        MoveCase{"RenamedMonthsOfWhichOneIsLonger",
                 {"- p/01/1 50000", "- p/01/2 50000", "- p/02/1 50000", "+ p/Jan/1 50000", "+ p/Jan/2 50000",
                  "+ p/Feb/1 50000"},
                 {"p/01/1 > p/Jan/1", "p/01/2 > p/Jan/2", "p/02/1 > p/Feb/1"}},
        MoveCase{"TwoCopiesOfAFolder",
                 {"- a/1 50000", "- a/2 60000", "- a/3 70000", "+ b/1 50000", "+ b/2 60000", "+ b/3 70000",
                  "+ c/1 50000", "+ c/2 60000", "+ c/3 70000"},
                 {}},
        MoveCase{
            "TwoFoldersIntoOne",
            {"- a/x 90000", "- b/y 80000", "- a/i 5", "- b/i 5", "+ c/x 90000", "+ c/y 80000", "+ c/i 5"},
            {"a/x > c/x", "b/y > c/y"}},
        MoveCase{"Swapped",
                 {"- a/1 50000", "- a/2 60000", "- b/3 70000", "- b/4 80000", "+ b/1 50000", "+ b/2 60000",
                  "+ a/3 70000", "+ a/4 80000"},
                 {"a/1 > b/1", "a/2 > b/2", "b/3 > a/3", "b/4 > a/4"}},
        MoveCase{"SwappedUnderTheSameNames", {"~ a/1 50000", "~ b/1 50000"}, {}},
        MoveCase{"IntoARenamedFolder",
                 {"- old/z 70000", "- a/1 5", "- a/2 6", "- a/3 7", "+ new/z 70000", "+ new/a/1 5",
                  "+ new/a/2 6", "+ new/a/3 7"},
                 {"old/z > new/z", "a/1 > new/a/1", "a/2 > new/a/2", "a/3 > new/a/3"}},
        MoveCase{"ToTheRootOfAnotherLocation",
                 {"home@0 - a/1 5", "home@0 - a/2 6", "home@0 - a/s/3 7", "disk@9 + 1 5", "disk@9 + 2 6",
                  "disk@9 + s/3 7"},
                 {"a/1 > disk:1", "a/2 > disk:2", "a/s/3 > disk:s/3"}}),
    [](const auto& one) { return std::string(one.param.name); });

// What was estimated, and what is a group, tells nothing of one file.
TEST(Moves, OnlyMeasuredFilesMove) {
    auto changes = changesOf({"- a/x 20000", "+ b/x 20000"});
    changes[1].fileCount = 2;
    EXPECT_TRUE(Moves(changes).empty());
    changes[1].fileCount = 1;
    changes[1].source = ChangeSource::estimated;
    EXPECT_TRUE(Moves(changes).empty());
}

TEST(Moves, AFolderMovedWhenAllOfItDidTheSameWay) {
    const auto changes = changesOf({"- in/p/s/1 50000", "- in/p/2 60000", "+ out/q/s/1 50000",
                                    "+ out/q/2 60000", "- in/r/3 70000", "+ out/r/3 70000", "~ in/r/4 1"});
    const Moves moves(changes);
    const auto moveOf = [&](FolderPath path) -> std::string {
        const auto move = moves.moveOf({{"home"}, std::move(path)});
        return move ? (move->hasLeft ? "to " : "from ") + pathOf(move->other) : "";
    };
    EXPECT_EQ(moveOf({"in", "p"}), "to out/q/");
    EXPECT_EQ(moveOf({"in", "p", "s"}), "to out/q/s/");
    EXPECT_EQ(moveOf({"out", "q", "s"}), "from in/p/s/");
    EXPECT_EQ(moveOf({"out", "r"}), "from in/r/");
    for (const FolderPath& path : {FolderPath{"in", "r"}, FolderPath{"in"}, FolderPath{"out"}, FolderPath{},
                                   FolderPath{"in", "p", "2"}, FolderPath{"in", "nowhere"}})
        EXPECT_EQ(moveOf(path), "") << path.size();
    EXPECT_EQ(moves.totals(), (Moves::Totals{.files = 3, .bytes = 180'000}));
}

}  // namespace
}  // namespace brindle
