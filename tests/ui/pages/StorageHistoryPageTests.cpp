#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"
#include "app/pages/StorageHistoryModel.h"
#include "ui/Scene.h"

#include <QAccessible>
#include <gtest/gtest.h>

namespace brindle {
namespace {

class StorageHistoryPageTest : public testing::Test {
protected:
    StorageHistoryPageTest() {
        history_->known.today = {2026, 3, 7};
        history_->include("home", "Home", {2026, 1, 1});
        history_->record("home", {2026, 3, 6}, {"Movies"}, 5'000'000'000);
        selection().setDestination(Destination::history);
    }

    [[nodiscard]] bool show() {
        if (!shown_.show(history_)) return false;
        scene_.show("StorageHistoryPage { widthClass: 1; focus: true }", {1180, 760},
                    {{"model", QVariant::fromValue(&page_)}});
        for (int tabs = 0; tabs < 10 && focusedName().isEmpty(); ++tabs) scene_.press(Qt::Key_Tab);
        return true;
    }
    [[nodiscard]] Selection& selection() { return *shown_.model().selection(); }
    /// What is read of the calendar's day that has the keyboard; empty while it is elsewhere.
    [[nodiscard]] QString focusedName() {
        QQuickItem* item = scene_.window().activeFocusItem();
        auto* reader = item == nullptr ? nullptr : QAccessible::queryAccessibleInterface(item);
        const bool isDay = reader != nullptr && reader->role() == QAccessible::Cell;
        return isDay ? reader->text(QAccessible::Name) : QString();
    }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    ShownHistory shown_;
    StorageHistoryModel page_{shown_.model()};
    Scene scene_;
};

TEST_F(StorageHistoryPageTest, TheKeyboardWalksTheCalendarAndOpensADay) {
    ASSERT_TRUE(show());
    EXPECT_EQ(focusedName(), "Saturday, March 7: No check")
        << "the calendar is one stop, at the selected day";
    scene_.press(Qt::Key_Left);
    EXPECT_EQ(focusedName(), "Friday, March 6: net change +5.0 GB, 5.0 GB added, 0 bytes freed");
    scene_.press(Qt::Key_Up);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 2, 27}));
    EXPECT_EQ(focusedName(), "Friday, February 27: No check");
    scene_.press(Qt::Key_Home);
    EXPECT_EQ(focusedName(), "Sunday, February 22: No check");
    scene_.press(Qt::Key_End);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 2, 28}));
    scene_.press(Qt::Key_PageUp);
    EXPECT_EQ(focusedName(), "Wednesday, January 28: No check");
    scene_.press(Qt::Key_PageDown);
    scene_.press(Qt::Key_PageDown);
    EXPECT_EQ(focusedName(), "Saturday, March 7: No check");
    scene_.press(Qt::Key_Left);
    scene_.press(Qt::Key_Return);
    EXPECT_EQ(selection().destination(), Destination::activity);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 6}));
    EXPECT_EQ(scene_.warnings(), "");
}

TEST_F(StorageHistoryPageTest, InAMirroredWindowTheArrowsFollowTheEye) {
    ASSERT_TRUE(show());
    scene_.show(
        "Item { LayoutMirroring.enabled: true; LayoutMirroring.childrenInherit: true\n"
        "property alias model: page.model\n"
        "StorageHistoryPage { id: page; anchors.fill: parent; widthClass: 1; focus: true } }",
        {1180, 760}, {{"model", QVariant::fromValue(&page_)}});
    for (int tabs = 0; tabs < 10 && focusedName().isEmpty(); ++tabs) scene_.press(Qt::Key_Tab);
    scene_.press(Qt::Key_Right);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 6}));
    scene_.press(Qt::Key_Left);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 7}));
}

}  // namespace
}  // namespace brindle
