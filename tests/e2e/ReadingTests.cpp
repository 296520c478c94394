#include "e2e/Brindle.h"
#include "support/TempHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Arguments = std::vector<std::string>;

/// A starting point of yesterday, and changes of today.
class Reading : public testing::Test {
protected:
    Reading() {
        writeFile(tree / "photos/shrinks", 1000);
        writeFile(tree / "photos/goes", 900);
        writeFile(tree / "stays", 5);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        for (const char* table : {"scan_runs", "tracked_totals", "daily_totals"})
            execute(std::string("UPDATE ") + table + " SET local_day = date('now', '-1 day')");
        execute("UPDATE locations SET baseline_at = baseline_at - 86400");
        writeFile(tree / "photos/Résumé.pdf", 5000);
        writeFile(tree / "photos/2025/a.jpg", 300);
        writeFile(tree / "=new", 70);
        writeFile(tree / "photos/shrinks", 200);
        fs::remove(tree / "photos/goes");
        EXPECT_EQ(brindle.run({"check"}).exitCode, 0);
    }

    void execute(const std::string& sql) const { rowsOf(brindle.historyFile(), sql); }
    [[nodiscard]] std::string output(const Arguments& arguments, int expectedExitCode = 0) const {
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, expectedExitCode) << result.error;
        return result.output;
    }
    [[nodiscard]] std::vector<std::string> namesOf(const Arguments& arguments) const {
        std::vector<std::string> names;
        const auto json = brindle.json(arguments);
        for (const auto& change : json["changes"]) names.push_back(change["name"]);
        return names;
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(Reading, ChangesAreFilteredSortedAndPaged) {
    EXPECT_THAT(namesOf({"changes"}), ElementsAre("Résumé.pdf", "goes", "shrinks", "a.jpg", "=new"));
    EXPECT_THAT(namesOf({"changes", "--search", " RESUME "}), ElementsAre("Résumé.pdf"));
    EXPECT_THAT(namesOf({"changes", "--freed"}), ElementsAre("goes", "shrinks"));
    EXPECT_THAT(namesOf({"changes", "--added", "--sort", "name"}),
                ElementsAre("=new", "a.jpg", "Résumé.pdf"));
    EXPECT_THAT(namesOf({"changes", "--folder", tree / "photos/2025"}), ElementsAre("a.jpg"));
    EXPECT_THAT(namesOf({"changes", "--limit", "2", "--page", "3"}), ElementsAre("=new"));

    EXPECT_THAT(output({"changes", "--limit", "2", "--page", "2"}),
                HasSubstr(": +5.4 kB added, −1.7 kB freed in 5 files\n"
                          "  −800 bytes  shrank  tree/photos/shrinks\n"
                          "  +300 bytes  added   tree/photos/2025/a.jpg\n"
                          "  … and 1 more; --page 3 lists the next, --limit 0 all\n"));
    EXPECT_THAT(output({"changes", "--since", "yesterday", "--added", "--limit", "1"}),
                ContainsRegex(" to [^\n]*\n\\+5.4 kB added, 0 bytes freed in 3 files\n"
                              "  20[0-9-]+  \\+5.0 kB  added  tree/photos/Résumé.pdf\n"));
    EXPECT_THAT(output({"changes", "--folders", tree / "photos"}),
                HasSubstr("\n  +300 bytes     0 bytes  tree/photos/2025\n"
                          "     +5.0 kB              tree/photos/Résumé.pdf\n"
                          "              −900 bytes  tree/photos/goes\n"));

    fs::create_directory(tree / "kept");
    writeFile(tree / "photos/film.mov", 20'000);
    EXPECT_EQ(brindle.run({"check"}).exitCode, 0);
    fs::rename(tree / "photos/film.mov", tree / "kept/film.mov");
    EXPECT_EQ(brindle.run({"check"}).exitCode, 0);
    EXPECT_THAT(output({"changes", "--search", "film", "--freed"}),
                HasSubstr("  −20.0 kB  removed  tree/photos/film.mov\n"
                          "                     Likely moved to tree/kept\n"));
    EXPECT_THAT(output({"changes", "--folders"}), HasSubstr("  tree\n")) << "only some of it moved";
    EXPECT_THAT(output({"changes", "--folders", tree}),
                HasSubstr("  tree/kept\n"
                          "                       Likely moved from tree/photos\n"));
    const auto moved = brindle.json({"changes", "--search", "film"})["changes"];
    ASSERT_EQ(moved.size(), 3);
    const auto with = [&](const char* half) {
        return std::ranges::find_if(moved, [&](const auto& change) { return change.contains(half); });
    };
    const auto gone = with("likelyMovedTo");
    const auto come = with("likelyMovedFrom");
    ASSERT_TRUE(gone != moved.end() && come != moved.end());
    EXPECT_EQ((*gone)["likelyMovedTo"]["folder"], "kept");
    EXPECT_EQ((*gone)["likelyMovedTo"]["change"], (*come)["id"]);
    EXPECT_EQ((*come)["likelyMovedFrom"]["folder"], "photos");

    const auto none = brindle.run({"changes", "--search", "nowhere"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.error, "No changes match.\n");
}

TEST_F(Reading, RowsAreTakenOutAsCSVThatNoSpreadsheetRuns) {
    EXPECT_THAT(
        output({"changes", "--csv", "--added", "--sort", "name", "--limit", "1"}),
        AllOf(
            StartsWith("Date,Observed at,File,Folder,Path,Change in bytes,Action,Location,Source,Files\r\n"),
            HasSubstr(",'=new,"), HasSubstr(",70,Added,tree,Measured,1\r\n"), Not(HasSubstr("jpg"))));
    EXPECT_THAT(
        output({"changes", "--csv", "--folders"}),
        testing::StrEq("Kind,Path,Added in bytes,Freed in bytes,Files\r\nFolder,tree,5370,1700,5\r\n"));
    EXPECT_THAT(output({"changes", "--csv", "--search", "nowhere"}, 1), testing::EndsWith("Files\r\n"));
    EXPECT_THAT(output({"grew", "--csv"}),
                HasSubstr("Folder,Growth in bytes\r\ntree,3670\r\ntree/photos,3600\r\n"));
    EXPECT_THAT(output({"day", "--csv"}), ContainsRegex("20[0-9-]+,tree/photos,5000,1700,3,Measured\r\n"));
    EXPECT_THAT(output({"trends", "week", "--csv"}),
                AllOf(ContainsRegex("[0-9-]+,notTracked,,,,,,,\r\n[0-9-]+,recorded,,0,0,0,,,1905\r\n"
                                    "[0-9-]+,recorded,,5370,1700,5,,,5575\r\n$")));
    for (const char* command : {"changes", "grew", "day"})
        EXPECT_EQ(brindle.run({command, "--csv", "--json"}).error, "Give one of --json and --csv.\n");
}

TEST_F(Reading, WhatGrewIsATreeAndItsExitCodeTellsOfTheLimit) {
    EXPECT_THAT(output({"grew"}), testing::EndsWith("What grew:\n"
                                                    "     +3.7 kB  tree\n"
                                                    "     +3.6 kB  └─ photos\n"
                                                    "  +300 bytes     └─ 2025\n"));
    EXPECT_THAT(output({"grew", "--over", "3.6kB"}, 1),
                testing::EndsWith("What grew by more than 3.6 kB:\n  +3.7 kB  tree\n"));
    const auto small = brindle.run({"grew", "--since", "yesterday", "--over", "1MB"});
    EXPECT_EQ(small.exitCode, 0);
    EXPECT_THAT(small.error, StartsWith("Nothing grew by more than 1.0 MB: "));
    const auto within = brindle.json({"grew", "--over", "0", tree / "photos/2025"}, 1);
    EXPECT_EQ(within["folders"][0]["folder"], "photos/2025");
    EXPECT_EQ(within["folders"][0]["net"], 300);
    const auto unchecked = brindle.run({"grew", "--day", "2020-02-29"});
    EXPECT_EQ(unchecked.exitCode, 0);
    EXPECT_EQ(unchecked.error, "No check covers Saturday, February 29, 2020.\n");
}

TEST_F(Reading, TrendsShowGapsAsGaps) {
    const std::string week = output({"trends", "week"});
    EXPECT_THAT(week, ContainsRegex("^7 days to [^\n]*\n(  [^\n]* – +– +│ not tracked\n){5}"
                                    "  [^\n]* 0 bytes +0 bytes +│\n"
                                    "  [^\n]* \\+5.4 kB +−1.7 kB +(█)+│(█)+"));
    EXPECT_THAT(week, AllOf(HasSubstr("Changes       +5.4 kB added, −1.7 kB freed in 5 files, net +3.7 kB\n"),
                            HasSubstr("There is nothing to compare with: tracking began on "),
                            HasSubstr("5.6 kB at the end\n"),
                            HasSubstr("Largest contributors:\n     +5.0 kB  −1.7 kB  tree/photos\n"),
                            HasSubstr("too few readings of this drive for a forecast")));
    const auto json = brindle.json({"trends", "quarter", "tree"});
    EXPECT_EQ(json["days"].size(), 90U);
    EXPECT_FALSE(json["days"][0].contains("totals"));
    EXPECT_TRUE(json["days"][0]["trackedBytes"].is_null());
    EXPECT_TRUE(json["before"].is_null());
    EXPECT_EQ(json["noComparison"]["reason"], "notTracked");
    EXPECT_EQ(json["figures"]["totals"], brindle.json({"day"})["totals"]);
    EXPECT_EQ(json["drives"][0]["forecast"]["reason"], "tooFewReadings");

    const auto unknown = brindle.run({"trends", "month", "--day", "2020-02-29"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.error, "No check covers the 30 days to Saturday, February 29, 2020.\n");

    ProgramLaunch plain = brindle.launch({"trends", "week"});
    plain.setVariable("LC_ALL", "C");
    EXPECT_THAT(runProgram(plain).output, ContainsRegex("\\+5.4 kB +−1.7 kB +#+\\|#+\n"));
}

TEST_F(Reading, TheDayIsToldInOneSentence) {
    const std::string sentence = "5.4 kB came and 1.7 kB went, most of it in photos.";
    EXPECT_THAT(output({"day"}), HasSubstr("\n" + sentence + "\n"));
    EXPECT_EQ(brindle.json({"day"})["sentence"], sentence);
    EXPECT_FALSE(brindle.json({"day", "yesterday"}).contains("sentence"));
}

TEST_F(Reading, SpeaksTheLanguageOfTheUserButForFormats) {
    const auto inGerman = [&](const Arguments& arguments) {
        ProgramLaunch launch = brindle.launch(arguments);
        launch.setVariable("LANGUAGE", "de");
        return runProgram(launch).output;
    };
    EXPECT_THAT(inGerman({"day"}),
                HasSubstr("\n5,4 kB kamen hinzu und 1,7 kB fielen weg, das meiste davon in photos.\n"));
    EXPECT_THAT(inGerman({"changes", "--limit", "1"}),
                AllOf(HasSubstr("  +5,0 kB  neu  "), HasSubstr("\n  … und 4 weitere; --page 2 zeigt")));
    EXPECT_THAT(inGerman({"changes", "--help"}), AllOf(HasSubstr("Aufruf: brindle changes [OPTIONEN]"),
                                                       Not(HasSubstr("Options")), Not(HasSubstr("only"))));
    for (const Arguments& format : {Arguments{"changes", "--csv"}, {"day", "--csv"}, {"status", "--json"}})
        EXPECT_EQ(inGerman(format), output(format));
}

TEST_F(Reading, WrongWordsAreToldInOneSentence) {
    const struct {
        Arguments arguments;
        const char* sentence;
    } cases[] = {
        {{"changes", "--added", "--freed"}, "Give one of --added and --freed.\n"},
        {{"changes", "--page", "2"}, "There is only 1 page.\n"},
        {{"changes", "--folders", "--sort", "name"}, "--sort sorts files"},
        {{"changes", "--sort", "size"}, "--sort"},
        {{"changes", "--folder", ""}, "A path is empty."},
        {{"grew", "--over", "5G"}, "“5G” isn't a size."},
        {{"grew", folder.path()}, "isn't in any included location.\n"},
        {{"trends"}, "RANGE"},
        {{"trends", "year"}, "year"},
        {{"trends", "week", "--day", "9999-12-31"}, "is still to come.\n"},
        {{"trends", "week", "nowhere"}, "“nowhere” isn't an included location."},
    };
    for (const auto& [arguments, sentence] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, HasSubstr(sentence));
    }
}

}  // namespace
}  // namespace brindle
