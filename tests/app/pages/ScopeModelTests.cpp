#include "app/pages/ScopeModel.h"
#include "app/pages/ShownHistory.h"
#include "store/StoredHistory.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

class ScopeModelTest : public testing::Test {
protected:
    void include(const std::string& id, const std::string& name) {
        LocationRecord record{
            .id = {id}, .name = name, .path = "/home/ann/" + id, .scanPath = "/home/ann/" + id};
        record.volumeID = "drive";
        history_.store().insert(record).get();
        history_.check(id, {{"a", 1}});
    }
    [[nodiscard]] bool show() { return shown_.show(std::make_shared<StoredHistory>(history_.sharedStore())); }

    TempHistory history_;
    ShownHistory shown_;
};

TEST_F(ScopeModelTest, OffersEveryTrackedLocationAndKeepsToTheChosenOne) {
    ScopeModel scopes(shown_.model());
    EXPECT_EQ(scopes.options(), QStringList{"All locations"});
    include("a", "Documents");
    include("b", "Pictures\n");
    ASSERT_TRUE(show());
    EXPECT_EQ(scopes.options(), (QStringList{"All locations", "Documents", "Pictures\\n"}));
    EXPECT_TRUE(scopes.hasChoice());

    scopes.choose(2);
    EXPECT_EQ(shown_.model().selection()->scope(), LocationScope{LocationID{"b"}});
    scopes.choose(3);
    EXPECT_EQ(scopes.currentIndex(), 2);
    shown_.model().selection()->setScope({LocationID{"a"}});
    EXPECT_EQ(scopes.currentIndex(), 1);
    scopes.choose(0);
    EXPECT_EQ(shown_.model().selection()->scope(), LocationScope());
}

TEST_F(ScopeModelTest, TellsEqualNamesApart) {
    include("a", "Documents");
    include("b", "Documents");
    ScopeModel scopes(shown_.model());
    ASSERT_TRUE(show());
    EXPECT_EQ(scopes.options(),
              (QStringList{"All locations", "Documents (/home/ann/a)", "Documents (/home/ann/b)"}));
}

}  // namespace
}  // namespace brindle
