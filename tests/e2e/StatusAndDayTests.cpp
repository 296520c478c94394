#include "e2e/Brindle.h"
#include "support/TempHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class StatusAndDay : public testing::Test {
protected:
    StatusAndDay() {
        openToAll(folder.path());
        writeFile(tree / "sub/deep/deeper/a", 1000);
        writeFile(tree / "b", 10);
    }

    void check(int expectedExitCode = 0) const {
        EXPECT_EQ(brindle.run({"check"}).exitCode, expectedExitCode);
    }
    void execute(const std::string& sql) const { rowsOf(brindle.historyFile(), sql); }
    [[nodiscard]] std::string output(std::vector<std::string> arguments) const {
        const auto result = brindle.run(std::move(arguments));
        EXPECT_EQ(result.exitCode, 0) << result.error;
        return result.output;
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(StatusAndDay, EveryLocationIsShownAsItsLastCheckLeftIt) {
    if (!brindle.giveUpRoot()) GTEST_SKIP() << "the program cannot be started without rights";
    const fs::path gone = folder.path() / "gone";
    const fs::path refused = folder.path() / "refused";
    const fs::path unchecked = folder.path() / "unchecked";
    const fs::path removed = folder.path() / "removed";
    for (const fs::path& path : {gone, refused, unchecked, removed}) fs::create_directory(path);
    ASSERT_EQ(brindle.run({"check", tree, gone, refused, removed}).exitCode, 0);
    ASSERT_EQ(brindle.run({"remove", removed}).exitCode, 0);
    writeFile(tree / "b", 1510);
    fs::remove(tree / "sub/deep/deeper/a");
    fs::remove(gone);
    fs::permissions(refused, fs::perms::none);
    check(4);
    // Named one by one, they are locations still, and no folders that could not be included.
    for (const fs::path& named : {gone, refused}) EXPECT_EQ(brindle.run({"check", named}).exitCode, 4);
    ASSERT_EQ(brindle.run({"include", unchecked}).exitCode, 0);

    const std::string shown = output({"status"});
    EXPECT_THAT(shown,
                testing::ContainsRegex("tree  [^\n]*/tree\n  1.5 kB, checked [^\n,]*, [^\n,]*, [^\n,]*\n"
                                       "  Today: \\+1.5 kB added, −1.0 kB freed in 2 files\n"));
    EXPECT_THAT(shown, testing::ContainsRegex("/gone\n  0 bytes, checked [^\n]*, not connected\n"
                                              "  Today: no changes\n"));
    EXPECT_THAT(shown, testing::ContainsRegex("/refused\n  0 bytes, checked [^\n]*, needs access\n"));
    EXPECT_THAT(shown, testing::ContainsRegex("/unchecked\n  Never checked yet\n"));
    EXPECT_THAT(shown, AllOf(Not(HasSubstr("/removed")), HasSubstr(" free of ")));

    const auto status = brindle.json({"status"});
    ASSERT_EQ(status["locations"].size(), 4U);
    EXPECT_EQ(status["locations"][0]["today"]["totals"], brindle.json({"day"})["totals"]);
    EXPECT_EQ(status["locations"][1]["status"], "disconnected");
    EXPECT_TRUE(status["locations"][3]["lastCheckAt"].is_null());
    ASSERT_EQ(status["drives"].size(), 1U);
    EXPECT_GT(status["drives"][0]["capacity"]["totalBytes"], 0);
    EXPECT_EQ(status["otherProgramIsChecking"], false);
}

TEST_F(StatusAndDay, ADayIsToldWithItsTotalsItsGapsAndItsContributors) {
    if (!brindle.giveUpRoot()) GTEST_SKIP() << "the program cannot be started without rights";
    const fs::path other = folder.path() / "other";
    writeFile(other / "locked/x", 10);
    ASSERT_EQ(brindle.run({"check", tree, other}).exitCode, 0);
    EXPECT_THAT(output({"day"}), HasSubstr(": no changes\n"));
    writeFile(tree / "sub/deep/deeper/a", 3000);
    writeFile(tree / "sub/deep/c", 500);
    fs::remove(tree / "b");
    check();
    const std::string whole = output({"day"});
    EXPECT_THAT(whole, AllOf(HasSubstr(": +2.5 kB added, −10 bytes freed in 3 files\n2.5 kB came, most of it "
                                       "in tree/sub/deep/deeper.\n\n"),
                             HasSubstr("\n  tree: +2.5 kB added, −10 bytes freed in 3 files\n"),
                             HasSubstr("\n  other: no changes\n"), Not(HasSubstr("partial"))));
    EXPECT_THAT(whole, testing::ContainsRegex("Largest contributors:\n +\\+2.5 kB +0 bytes  tree/sub/deep\n"
                                              " +0 bytes +−10 bytes  tree\n$"));

    fs::permissions(other / "locked", fs::perms::none);
    check();
    EXPECT_THAT(output({"day", "today"}),
                HasSubstr("\nThe record is partial: some folders of “other” couldn't be read.\n"));
    const auto partial = brindle.json({"day"});
    EXPECT_EQ(partial["isPartial"], true);
    EXPECT_EQ(partial["locations"][0]["isPartial"], false);
    EXPECT_EQ(partial["contributors"][0]["folder"], "sub/deep");

    execute("DELETE FROM scan_runs WHERE location_id IN (SELECT id FROM locations WHERE name = 'other')");
    EXPECT_THAT(output({"day"}),
                AllOf(HasSubstr("\nThe record is partial: no check of “other” on this day.\n"),
                      HasSubstr("\n  other: no check\n")));
    fs::permissions(other / "locked", fs::perms(0755));
}

TEST_F(StatusAndDay, ADayWithoutACheckIsEstimatedOrUnknown) {
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    execute(
        "INSERT INTO estimates (location_id, local_day, folder, name, bytes, file_count, contributor, "
        "made_at) "
        "SELECT id, date('now', '-1 day'), 'sub/deep/deeper', '', 5000, 4, 'sub/deep', 0 FROM locations");
    EXPECT_THAT(
        output({"day", "yesterday"}),
        AllOf(HasSubstr(": about 5.0 kB in 4 files\n"), HasSubstr("An estimate from the dates of files"),
              HasSubstr("  tree: about 5.0 kB in 4 files\n"), HasSubstr("tree/sub/deep\n")));
    const auto estimated = brindle.json({"day", "yesterday"});
    EXPECT_EQ(estimated["state"], "estimated");
    EXPECT_EQ(estimated["estimate"]["files"], 4);
    EXPECT_FALSE(estimated.contains("totals"));

    const auto unknown = brindle.run({"day", "2020-02-29"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.error, "No check covers Saturday, February 29, 2020.\n");
    const auto future = brindle.run({"day", "9999-12-31"});
    EXPECT_EQ(future.exitCode, 1);
    EXPECT_EQ(future.error, "Friday, December 31, 9999 is still to come.\n");
    EXPECT_EQ(brindle.json({"day", "9999-12-31"}, 1)["state"], "future");
    EXPECT_EQ(brindle.run({"day", "2026-02-30"}).exitCode, 2);
}

}  // namespace
}  // namespace brindle
