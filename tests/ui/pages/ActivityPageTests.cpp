#include "app/pages/ActivityModel.h"
#include "app/pages/ExportModel.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"
#include "ui/Scene.h"

#include <QTest>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::IsEmpty;

constexpr LocalDay today{2026, 3, 7};

class ActivityPageTest : public testing::Test {
protected:
    ActivityPageTest() {
        history_->known.today = today;
        history_->include("home", "Home", {2026, 3, 1});
        for (int i = 0; i < 60; ++i)
            history_->record("home", today, {fmt::format("Folder {:02}", i), "Inner"}, 10'000 - i);
        history_->record("home", today, {}, -500);
    }

    /// Today's page in its folder "Home", with the keyboard in the list.
    [[nodiscard]] bool show() {
        if (!shown_.show(history_)) return false;
        shown_.model().selection()->setExplorer({.folder = FolderRef{{"home"}, {}}});
        scene_.show("ActivityPage { widthClass: 1; focus: true }", {1180, 760},
                    {{"model", QVariant::fromValue(&activity_)}});
        list_ = scene_.item().findChild<QQuickItem*>("changes");
        return list_ != nullptr && listed(61) &&
               runUntil([&] { return list_->property("isPlaceKept").toBool(); });
    }
    [[nodiscard]] bool listed(int rows) {
        return runUntil([&] { return explorer().rows()->rowCount() == rows; });
    }
    [[nodiscard]] ExplorerModel& explorer() { return *activity_.explorer(); }
    [[nodiscard]] int current() const { return list_->property("currentIndex").toInt(); }
    [[nodiscard]] double scrolled() const {
        return list_->property("contentY").toDouble() - list_->property("originY").toDouble();
    }

    /// Where the list has been scrolled to, once the current row is in view; 0 when it never is.
    [[nodiscard]] double placeOfCurrentRow() {
        const bool isInView = runUntil([&] {
            const auto* row = list_->property("currentItem").value<QQuickItem*>();
            return row != nullptr &&
                   row->y() + row->height() <= list_->property("contentY").toDouble() + list_->height();
        });
        return isInView ? scrolled() : 0;
    }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    ShownHistory shown_;
    ActivityModel activity_{shown_.model()};
    ExportModel export_{shown_.model()};
    Scene scene_;
    QQuickItem* list_ = nullptr;
};

TEST_F(ActivityPageTest, TheKeyboardGoesIntoFoldersAndBackToItsPlace) {
    ASSERT_TRUE(show());
    for (int i = 0; i < 40; ++i) scene_.press(Qt::Key_Down);
    EXPECT_EQ(current(), 40);
    const double place = placeOfCurrentRow();
    ASSERT_GT(place, 0);

    scene_.press(Qt::Key_Return);
    ASSERT_TRUE(listed(1));
    EXPECT_EQ(current(), 0);
    EXPECT_EQ(scrolled(), 0);
    scene_.press(Qt::Key_Return);
    ASSERT_TRUE(runUntil([&] { return explorer().rows()->rows().front().name == "file"; }));
    scene_.press(Qt::Key_Return);
    EXPECT_EQ(shown_.model().selection()->explorer().folder->components.size(), 2U) << "a file is not opened";

    scene_.press(Qt::Key_Backspace);
    scene_.press(Qt::Key_Up, Qt::AltModifier);
    ASSERT_TRUE(listed(61));
    EXPECT_TRUE(runUntil([&] { return current() == 40 && scrolled() == place; }));
    scene_.press(Qt::Key_Home);
    EXPECT_EQ(current(), 0);
    scene_.press(Qt::Key_End);
    EXPECT_EQ(current(), 60);
    EXPECT_THAT(scene_.warnings(), IsEmpty());
}

TEST_F(ActivityPageTest, TheSearchTakesTheKeyboardWhenAskedAndEscapeEmptiesIt) {
    ASSERT_TRUE(show());
    scene_.press(Qt::Key_Down);
    scene_.press(Qt::Key_Down);
    shown_.model().selection()->requestSearchFocus();
    for (const char key : std::string("older 3")) QTest::keyClick(&scene_.window(), key);
    ASSERT_TRUE(listed(10));
    scene_.press(Qt::Key_Down);
    scene_.press(Qt::Key_Down);
    EXPECT_EQ(current(), 1);
    scene_.press(Qt::Key_Escape);
    ASSERT_TRUE(listed(61));
    EXPECT_TRUE(runUntil([&] { return current() == 2; })) << "the place before the search";
    EXPECT_EQ(shown_.model().selection()->explorer().search, "");
}

TEST_F(ActivityPageTest, ThePageComesBackAsItWasLeft) {
    ASSERT_TRUE(show());
    for (int i = 0; i < 30; ++i) scene_.press(Qt::Key_Down);
    const double place = placeOfCurrentRow();
    ASSERT_GT(place, 0);
    scene_.show("Item {}");
    scene_.show("ActivityPage { widthClass: 1; focus: true }", {1180, 760},
                {{"model", QVariant::fromValue(&activity_)}});
    list_ = scene_.item().findChild<QQuickItem*>("changes");
    EXPECT_TRUE(runUntil([&] { return current() == 30 && scrolled() == place; }));
}

TEST_F(ActivityPageTest, AnExportIsConfirmedAndLeftByTheKeyboard) {
    ASSERT_TRUE(shown_.show(history_));
    int asked = 0;
    QObject::connect(&export_, &ExportModel::destinationRequested, [&] { ++asked; });
    scene_.show("ExportDialogs {}", {960, 680}, {{"model", QVariant::fromValue(&export_)}});
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        shown_.model().prepareExport();
        ASSERT_TRUE(runUntil([&] { return export_.step() == ExportModel::Confirming; }));
        QTest::qWait(200);
        scene_.press(key);
        EXPECT_EQ(export_.step(), key == Qt::Key_Return ? ExportModel::Choosing : ExportModel::Idle);
    }
    EXPECT_EQ(asked, 1);
    EXPECT_THAT(scene_.warnings(), IsEmpty());
}

}  // namespace
}  // namespace brindle
