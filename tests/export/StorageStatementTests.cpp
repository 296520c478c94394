#include "export/StatementRows.h"
#include "export/StorageStatement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace brindle {
namespace {

using namespace std::string_literals;
using storageStatement::Cell;

TEST(StorageStatement, CellsAreHarmlessAndComeBackAsTheyWere) {
    const struct {
        Cell cell;
        std::string encoded;
    } cases[] = {
        {"", ""},
        {"notes.txt", "notes.txt"},
        {"=SUM(A1).txt", "'=SUM(A1).txt"},
        {"+1", "'+1"},
        {"-draft.txt", "'-draft.txt"},
        {"@home", "'@home"},
        {"\ttab", "'\ttab"},
        {"\rreturn", "\"'\rreturn\""},
        {"\nline", "\"\nline\""},
        {"a=b", "a=b"},
        {"a, b", "\"a, b\""},
        {"say \"hi\"", "\"say \"\"hi\"\"\""},
        {"=\"x\",y", "\"'=\"\"x\"\",y\""},
        {"two\nlines", "\"two\nlines\""},
        {"\x1b[31m\x7f", "\x1b[31m\x7f"},
        {"Grüße 文 \U0001F4BE", "Grüße 文 \U0001F4BE"},
        {"a\xffz", "a\uFFFDz"},
        {"\xe6\x96,", "\"\uFFFD,\""},
        {"=\xc0\xaf", "'=\uFFFD\uFFFD"},
        {std::int64_t{0}, "0"},
        {std::int64_t{-1'048'576}, "-1048576"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"},
    };
    for (const auto& [cell, encoded] : cases) EXPECT_EQ(storageStatement::encoded(cell), encoded);
    EXPECT_EQ(storageStatement::headerLine(),
              "Date,Observed at,File,Folder,Path,Change in bytes,Action,Location,Source,Files\r\n");
    EXPECT_EQ(storageStatement::fileName({2026, 3, 7}, false), "Brindle-2026-03-07.csv");
    EXPECT_EQ(storageStatement::fileName({987, 12, 31}, true), "Brindle-example-0987-12-31.csv");
}

const std::vector<TrackedLocation> locations = {{.id = {"ann"}, .name = "Ann, home", .path = "/home/ann"},
                                                {.id = {"disk"}, .name = "Disk", .path = "/"},
                                                {.id = {"odd"}, .name = "", .path = "/odd/"}};

std::string lineOf(StatementRows& rows, const FileChange& change) {
    std::string line;
    storageStatement::appendLine(rows.row(change), line);
    return line;
}

/// A file that grew by 5 bytes, but for what a case changes.
FileChange grown(const std::string& location, std::vector<std::string> folder, std::string name) {
    return {.id = 1,
            .locationID = {location},
            .folder = std::move(folder),
            .name = std::move(name),
            .action = ChangeAction::grew,
            .byteDelta = 5,
            .observedAt = 1'772'888'709.75,  // 2026-03-07 13:05:09 UTC
            .day = {2026, 3, 7}};
}

FileChange with(FileChange change, void (*alter)(FileChange&)) {
    alter(change);
    return change;
}

TEST(StorageStatement, ARowTellsAChangeAsItsLocationAndItsZoneHaveIt) {
    const std::string day = "2026-03-07,2026-03-07T14:05:09+0100,";
    const struct {
        FileChange change;
        std::string line;
    } cases[] = {
        {grown("ann", {}, "a"), day + "a,/home/ann,/home/ann/a,5,Grew,\"Ann, home\",Measured,1\r\n"},
        {grown("ann", {"b", "c"}, "a"),
         day + "a,/home/ann/b/c,/home/ann/b/c/a,5,Grew,\"Ann, home\",Measured,1\r\n"},
        {grown("ann", {"b", "c"}, "longer"),
         day + "longer,/home/ann/b/c,/home/ann/b/c/longer,5,Grew,\"Ann, home\",Measured,1\r\n"},
        {grown("disk", {"b", "c"}, "a"), day + "a,/b/c,/b/c/a,5,Grew,Disk,Measured,1\r\n"},
        {grown("disk", {}, "a"), day + "a,/,/a,5,Grew,Disk,Measured,1\r\n"},
        {grown("odd", {"b"}, "a"), day + "a,/odd/b,/odd/b/a,5,Grew,,Measured,1\r\n"},
        {grown("odd", {}, "a"), day + "a,/odd/,/odd/a,5,Grew,,Measured,1\r\n"},
        {grown("gone", {"b", "c"}, "a"), day + "a,b/c,b/c/a,5,Grew,Removed location,Measured,1\r\n"},
        {grown("gone", {}, "=a"), day + "'=a,,'=a,5,Grew,Removed location,Measured,1\r\n"},
        {with(grown("disk", {"b"}, ""), [](FileChange& c) { c.fileCount = 1240; }),
         day + "\"1,240 smaller files\",/b,/b,5,Grew,Disk,Measured,1240\r\n"},
        {with(grown("disk", {"b"}, "named"), [](FileChange& c) { c.fileCount = 2; }),
         day + "2 smaller files,/b,/b,5,Grew,Disk,Measured,2\r\n"},
        {with(grown("disk", {"b"}, ""), [](FileChange&) {}),
         day + "1 smaller file,/b,/b,5,Grew,Disk,Measured,1\r\n"},
        {with(grown("disk", {}, "a"), [](FileChange& c) { c.action = ChangeAction::added; }),
         day + "a,/,/a,5,Added,Disk,Measured,1\r\n"},
        {with(grown("disk", {}, "a"),
              [](FileChange& c) { c.action = ChangeAction::shrank, c.byteDelta = -5; }),
         day + "a,/,/a,-5,Shrank,Disk,Measured,1\r\n"},
        {with(grown("disk", {}, "a"),
              [](FileChange& c) { c.action = ChangeAction::removed, c.byteDelta = -5; }),
         day + "a,/,/a,-5,Removed,Disk,Measured,1\r\n"},
        {with(grown("disk", {}, "a"), [](FileChange& c) { c.source = ChangeSource::estimated; }),
         "2026-03-07,,a,/,/a,5,Grew,Disk,Estimated,1\r\n"},
        {with(grown("disk", {}, "a"),
              [](FileChange& c) {
                  c.day = {2026, 7, 1}, c.observedAt = 1'782'907'200;
              }),
         "2026-07-01,2026-07-01T14:00:00+0200,a,/,/a,5,Grew,Disk,Measured,1\r\n"},
    };
    StatementRows rows(locations, false, Calendar("en_US", "Europe/Berlin"));
    // Twice: what the rows before left behind must not be seen in those after.
    for (int round = 0; round < 2; ++round)
        for (const auto& [change, line] : cases) EXPECT_EQ(lineOf(rows, change), line);

    StatementRows example(locations, true, Calendar("en_US", "UTC"));
    auto change = grown("disk", {}, "a");
    EXPECT_EQ(lineOf(example, change),
              "2026-03-07,2026-03-07T13:05:09+0000,a,/,/a,5,Grew,Disk,Example,1\r\n");
    change.source = ChangeSource::estimated;
    EXPECT_EQ(lineOf(example, change), "2026-03-07,,a,/,/a,5,Grew,Disk,Example estimate,1\r\n");
}

}  // namespace
}  // namespace brindle
