#include "e2e/Records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

/// A location in a location: its files are counted once, and who counts them may change.
class NestedLocations : public testing::TestWithParam<bool> {
protected:
    NestedLocations() {
        writeFile(outer / "a", 10);
        writeFile(inner / "b", 20);
        writeFile(inner / "deeper/c", 30);
    }

    /// The outer location as its check tells of it.
    [[nodiscard]] nlohmann::json checkOuter() const { return brindle.json({"check", outer})["locations"][0]; }

    TempFolder folder;
    fs::path outer = folder.path() / "outer";
    fs::path inner = outer / "x/inner";
    Brindle brindle;
};

TEST_P(NestedLocations, TheOuterOneTakesTheFilesOfARemovedOneOver) {
    const bool isChecked = GetParam();  // else it is only included, and is to be forgotten
    ASSERT_EQ(brindle.run({"include", inner}).exitCode, 0);
    if (isChecked) {
        ASSERT_EQ(brindle.run({"check", inner}).exitCode, 0);
    }
    EXPECT_EQ(checkOuter()["trackedBytes"], 10);
    ASSERT_EQ(brindle.run({isChecked ? "remove" : "forget", inner}).exitCode, 0);

    const auto takenOver = checkOuter();
    EXPECT_EQ(takenOver["totals"], nlohmann::json({{"added", 0}, {"freed", 0}, {"count", 0}}));
    EXPECT_EQ(takenOver["trackedBytes"], 10 + 20 + 30);
    EXPECT_EQ(takenOver["unreadableFolders"], nlohmann::json::array());
    const Records records(brindle);
    EXPECT_EQ(records.value("SELECT COUNT(*) FROM observations"), "0");
    EXPECT_EQ(records.value("SELECT COUNT(*) FROM inventory"), "3");

    writeFile(inner / "deeper/d", 5);
    fs::remove(inner / "b");
    EXPECT_EQ(checkOuter()["totals"], nlohmann::json({{"added", 5}, {"freed", 20}, {"count", 2}}));
    EXPECT_THAT(Records(brindle).rows("SELECT folder, name, action, delta FROM observations ORDER BY name"),
                ElementsAre("x/inner|b|removed|-20", "x/inner/deeper|d|added|5"));
}

INSTANTIATE_TEST_SUITE_P(EitherWay, NestedLocations, testing::Bool());

}  // namespace
}  // namespace brindle
