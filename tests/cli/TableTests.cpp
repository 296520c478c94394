#include "cli/Table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;

Table changes() {
    Table table({ColumnKind::figure, ColumnKind::word, ColumnKind::path});
    table.add({amountCell(812'000'000), Cell("added"), pathCell("Pictures/Raw/holiday.mov")});
    table.add({amountCell(-1'000), Cell("removed"), pathCell("Pictures/漢字.jpg")});
    table.add({{}, Cell("total")});
    return table;
}

TEST(Table, IsWholeWhereNoTerminalShowsIt) {
    EXPECT_THAT(changes().lines(Output(), {}), ElementsAre("  +812.0 MB  added    Pictures/Raw/holiday.mov",
                                                           "    −1.0 kB  removed  Pictures/漢字.jpg",  //
                                                           "             total"));
}

TEST(Table, CutsPathsAndNothingElse) {
    EXPECT_THAT(changes().lines(Output(), 40),
                ElementsAre("  +812.0 MB  added    …/Raw/holiday.mov",
                            "    −1.0 kB  removed  Pictures/漢字.jpg", "             total"));
    // A terminal that is too narrow for the figures alone wraps the lines.
    EXPECT_THAT(changes().lines(Output(), 10),
                ElementsAre("  +812.0 MB  added    …/holiday.mov", "    −1.0 kB  removed  …/漢字.jpg",
                            "             total"));
}

TEST(Table, KeepsWhatLeadsToAPathAndHarmfulNamesHarmless) {
    Table table({ColumnKind::path, ColumnKind::figure});
    Cell cell = pathCell("a\x1b[31m/folder of a\nlong name");
    cell.parts.insert(cell.parts.begin(), {"└─ "});
    table.add({cell, amountCell(0)});
    EXPECT_THAT(table.lines(Output(), {}), ElementsAre("  └─ a\\x1b[31m/folder of a\\nlong name  0 bytes"));
    EXPECT_THAT(table.lines(Output(), 31), ElementsAre("  └─ …/folder …ng name  0 bytes"));
}

}  // namespace
}  // namespace brindle
