#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"
#include "app/pages/TrendsModel.h"
#include "ui/Scene.h"

#include <QAccessible>
#include <gtest/gtest.h>

namespace brindle {
namespace {

class TrendsPageTest : public testing::Test {
protected:
    TrendsPageTest() {
        history_->known.today = {2026, 3, 7};
        history_->include("home", "Home", {2026, 1, 1});
        history_->record("home", {2026, 3, 5}, {"Movies"}, 5'000'000'000);
        history_->record("home", {2026, 3, 6}, {"Movies"}, -2'000'000'000);
        shown_.model().selection()->setDestination(Destination::trends);
    }

    [[nodiscard]] bool show() {
        if (!shown_.show(history_)) return false;
        scene_.show("TrendsPage { widthClass: 1; focus: true }", {1180, 760},
                    {{"model", QVariant::fromValue(&page_)}});
        return true;
    }
    [[nodiscard]] bool tabInto(const QString& name) {
        QQuickItem& place = scene_.item(name);
        for (int tabs = 0; tabs < 30 && !place.hasActiveFocus(); ++tabs) scene_.press(Qt::Key_Tab);
        return place.hasActiveFocus();
    }
    [[nodiscard]] QString focusedName() {
        auto* reader = QAccessible::queryAccessibleInterface(scene_.window().activeFocusItem());
        return reader->text(QAccessible::Name);
    }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    ShownHistory shown_;
    TrendsModel page_{shown_.model()};
    Scene scene_;
};

TEST_F(TrendsPageTest, BarsAreReadByTheKeyboardAndThePointer) {
    ASSERT_TRUE(show());
    ASSERT_TRUE(tabInto("barChart"));
    EXPECT_EQ(focusedName(), "Saturday, March 7: No check");
    scene_.press(Qt::Key_Left);
    EXPECT_EQ(focusedName(), "Friday, March 6: net change \u22122.0 GB, 0 bytes added, 2.0 GB freed");
    scene_.press(Qt::Key_Home);
    EXPECT_EQ(page_.currentRow(), 0);
    scene_.press(Qt::Key_End);
    scene_.press(Qt::Key_Right);
    EXPECT_EQ(page_.currentRow(), 6);
    scene_.hover(scene_.item("barChart"));
    EXPECT_EQ(page_.currentRow(), 3);
    scene_.press(Qt::Key_Right);
    scene_.press(Qt::Key_Return);
    EXPECT_EQ(shown_.model().selection()->destination(), Destination::activity);
    EXPECT_EQ(shown_.model().selection()->day(), (LocalDay{2026, 3, 5}));
    EXPECT_EQ(scene_.warnings(), "");
}

TEST_F(TrendsPageTest, TheTableLeadsToTheSameDays) {
    page_.setShowsTable(true);
    ASSERT_TRUE(show());
    ASSERT_TRUE(tabInto("dayTable"));
    scene_.press(Qt::Key_Up);
    EXPECT_EQ(page_.currentRow(), 5);
    scene_.press(Qt::Key_Up);
    scene_.press(Qt::Key_Return);
    EXPECT_EQ(shown_.model().selection()->day(), (LocalDay{2026, 3, 5}));
    EXPECT_EQ(scene_.warnings(), "");
}

}  // namespace
}  // namespace brindle
