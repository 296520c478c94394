#include "e2e/Records.h"
#include "support/TempHistory.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

// One line a row: what a person sees in the columns that do not depend on the time.
constexpr const char* readBack = R"(
import csv, sys
with open(sys.argv[1], encoding="utf-8-sig", newline="") as file:
    for row in csv.DictReader(file, strict=True):
        print(row["File"], row["Path"], row["Change in bytes"], row["Action"], row["Location"], row["Source"], sep="|")
)";

class Export : public testing::Test {
protected:
    Export() {
        writeFile(tree / "a", 10);
        writeFile(tree / "inner/b", 10);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        writeFile(tree / "a", 30);
        writeFile(tree / "inner/=c, \"d\"", 5);
        fs::remove(tree / "inner/b");
        EXPECT_EQ(brindle.run({"check"}).exitCode, 0);
        fs::create_directory(documents);
    }

    [[nodiscard]] std::string readByPython(const fs::path& statement) const {
        const auto result = runProgram(
            {.arguments = {"python3", "-c", readBack, statement},
             .environment = {std::string("PATH=") + std::getenv("PATH"), "PYTHONIOENCODING=utf-8"}});
        EXPECT_EQ(result.exitCode, 0) << result.error;
        return result.output;
    }

    /// A day so full that its statement takes a while.
    void recordManyChanges() const {
        (void)rowsOf(
            brindle.historyFile(),
            "INSERT INTO observations (location_id, folder, name, action, delta, observed_at, "
            "local_day, source, contributor, scan_id) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
            "SELECT i + 1 FROM n WHERE i < 400000) SELECT (SELECT id FROM locations), 'some/folder', "
            "'file ' || i, 'added', 1, 1e9, '2026-03-07', 'measured', '', 1 FROM n");
    }

    /// Starts the export of that day and sends the signal as soon as something is being written.
    [[nodiscard]] ProgramResult endExportBy(int signal) const {
        RunningProgram program(brindle.launch({"export", "--day", "2026-03-07"}));
        while (namesIn(documents).empty() && program.isRunning()) std::this_thread::yield();
        program.signal(signal);
        return program.wait();
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
    fs::path documents = brindle.home() / "Documents";
};

TEST_F(Export, TellsWhatAnotherProgramThenReads) {
    const auto rows = tree.native();
    const std::string expected = "a|" + rows + "/a|20|Grew|tree|Measured\n" +                         //
                                 "'=c, \"d\"|" + rows + "/inner/=c, \"d\"|5|Added|tree|Measured\n" +  //
                                 "b|" + rows + "/inner/b|-10|Removed|tree|Measured\n";
    const auto result = brindle.run({"export"});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Includes all 3 recorded changes on "));
    ASSERT_EQ(namesIn(documents).size(), 1U);
    const fs::path statement = documents / namesIn(documents).front();
    EXPECT_THAT(result.output, HasSubstr("Your storage statement is ready: " + statement.native() + "\n"));
    EXPECT_EQ(readByPython(statement), expected);

    // The same in standard output, where nothing else may be.
    const auto printed = brindle.run({"export", "--since", "yesterday", tree, "-o", "-"});
    std::ifstream stream(statement, std::ios::binary);
    EXPECT_EQ(printed.output, std::string(std::istreambuf_iterator<char>(stream), {}));
    EXPECT_THAT(printed.error, HasSubstr("in this location."));

    // A place that was chosen once is suggested from then on, for as long as that statement is there.
    const fs::path chosen = folder.path() / "chosen";
    fs::create_directory(chosen);
    const auto json = brindle.json({"export", "tree", "--output", chosen / "mine.csv"});
    EXPECT_EQ(json["path"], (chosen / "mine.csv").native());
    EXPECT_EQ(json["rows"], 3);
    EXPECT_EQ(readByPython(chosen / "mine.csv"), expected);
    EXPECT_EQ(brindle.json({"export"})["path"], (chosen / statement.filename()).native());
    EXPECT_THAT(namesIn(chosen), ElementsAre(statement.filename(), "mine.csv"));
    fs::remove_all(chosen);
    EXPECT_EQ(brindle.json({"export"})["path"], statement.native());
}

TEST_F(Export, WhatCannotBeWrittenIsAFailureAndLeavesNoTrace) {
    const auto before = Records(brindle).everything();
    const auto failed = brindle.run({"export", "-o", folder.path() / "absent/a.csv"});
    EXPECT_EQ(failed.exitCode, 3);
    EXPECT_THAT(failed.error, testing::StartsWith("The statement couldn't be saved. "));
    EXPECT_EQ(brindle.run({"export", "-o", "/dev/full"}).exitCode, 3);
    EXPECT_EQ(brindle.run({"export", "-o", "/dev/null"}).exitCode, 0);

    const auto nothing = brindle.run({"export", "--day", "yesterday"});
    EXPECT_EQ(nothing.exitCode, 1);
    EXPECT_EQ(nothing.error, "No changes are recorded for this scope, so there's nothing to export.\n");
    EXPECT_EQ(brindle.json({"export", "--day", "yesterday"}, 1)["rows"], 0);
    EXPECT_EQ(brindle.run({"export", tree / "inner"}).exitCode, 2);
    EXPECT_EQ(brindle.run({"export", "--json", "-o", "-"}).exitCode, 2);
    EXPECT_THAT(namesIn(documents), IsEmpty());
    EXPECT_EQ(Records(brindle).everything(), before);
}

TEST_F(Export, StoppedLeavesNothingAndKilledNothingForLong) {
    recordManyChanges();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto result = endExportBy(signal);
        EXPECT_EQ(result.exitCode, 130);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(namesIn(documents), IsEmpty());
    }
    EXPECT_THAT(Records(brindle).rows("SELECT * FROM exported_files"), IsEmpty());

    EXPECT_EQ(endExportBy(SIGKILL).exitCode, -SIGKILL);
    ASSERT_THAT(namesIn(documents), ElementsAre(HasSubstr(".partial")));
    EXPECT_EQ(brindle.json({"export", "--day", "2026-03-07"})["rows"], 400'000);
    EXPECT_THAT(namesIn(documents), ElementsAre("Brindle-2026-03-07.csv"));
}

}  // namespace
}  // namespace brindle
