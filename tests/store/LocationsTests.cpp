#include "support/TempHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(Locations, TextsThatAreNotKnownReadAsTheirFallback) {
    TempHistory history;
    history.include("x");
    rowsOf(history.file(), "UPDATE locations SET kind = '', status = 'asleep'");
    EXPECT_EQ(history.record("x").kind, LocationKind::folder);
    EXPECT_EQ(history.record("x").status, LocationStatus::active);
}

TEST(Locations, RemovingKeepsWhatWasRecorded) {
    TempHistory history;
    history.include("gone");
    history.include("stays");
    for (const auto* id : {"gone", "stays"}) {
        history.check(id, {{"a", 1}});
        history.check(id, {{"a", 2}, {"b", 3}}, {.unreadable = {{"locked", true}}});
    }
    const auto kept = [&] {
        std::vector<std::string> all;
        for (const std::string& row : history.everything())
            if (!row.starts_with("locations") && !row.starts_with("inventory: gone") &&
                !row.starts_with("unreadable_folders: gone"))
                all.push_back(row);
        return all;
    };
    const auto before = kept();
    history.store().remove({"gone"}, 77).get();
    EXPECT_EQ(kept(), before);
    EXPECT_EQ(history.rows("SELECT DISTINCT location_id FROM inventory"), std::vector<std::string>{"stays"});
    EXPECT_EQ(history.rows("SELECT DISTINCT location_id FROM unreadable_folders"),
              std::vector<std::string>{"stays"});
    EXPECT_EQ(history.record("gone").removedAt, 77);
    EXPECT_EQ(history.record("gone").status, LocationStatus::paused);
}

TEST(Locations, TheNearestOneAroundARemovedOneTakesItsFilesOver) {
    TempHistory history;
    for (const auto* id : {"other drive", "outer", "outer/middle", "outer/middle/inner", "outer/middlemost"})
        history.include(id);
    // The same paths on another drive: no walk leads from one drive to another.
    rowsOf(history.file(),
           "UPDATE locations SET scan_path = '/outer/middle', volume_id = 'other', baseline_at = 1 "
           "WHERE id = 'other drive'");
    history.check("outer", {{"a", 1}});
    const auto handedOver = [&] {
        return history.rows("SELECT location_id, rel_path, reason FROM unreadable_folders ORDER BY 1, 2");
    };
    // The nearest one has had no check yet: its first one is going to count everything in it anyway.
    history.store().forget({"outer/middle/inner"}).get();
    EXPECT_THAT(handedOver(), testing::IsEmpty());

    history.include("outer/middle/inner");
    history.check("outer/middle", {{"b", 2}});
    history.check("outer/middle/inner", {{"c", 3}});
    history.include("outer/middle/unchecked");
    history.store().forget({"outer/middle/unchecked"}).get();
    history.store().remove({"outer/middle/inner"}, 77).get();
    EXPECT_THAT(handedOver(), testing::ElementsAre("outer/middle|inner|2", "outer/middle|unchecked|2"));
    history.store().remove({"outer/middle"}, 78).get();
    EXPECT_THAT(handedOver(), testing::ElementsAre("outer|middle|2"));

    const CheckCommit taken = history.check("outer", {{"a", 1}, {"middle/b", 2}, {"middle/inner/c", 3}});
    EXPECT_EQ(taken.totals, ChangeTotals{});
    EXPECT_EQ(taken.trackedBytes, 6);
    // It is its own now, and stays so when the location is removed once more.
    history.store().remove({"outer/middle"}, 79).get();
    EXPECT_EQ(
        history.check("outer", {{"a", 1}, {"middle/b", 2}, {"middle/inner/c", 3}, {"middle/d", 4}}).totals,
        (ChangeTotals{4, 0, 1}));
}

}  // namespace
}  // namespace brindle
