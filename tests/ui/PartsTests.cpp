#include "ui/CutTexts.h"
#include "ui/Scene.h"

#include <QAccessible>
#include <QFile>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

QByteArray sheet() {
    QFile file(BRINDLE_PARTS_SHEET);
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    return file.readAll();
}

/// For a person to look at: written to the folder of BRINDLE_PICTURES, if there is one.
void keepPicture(Scene& scene, const QString& name) {
    const QString folder = qEnvironmentVariable("BRINDLE_PICTURES");
    if (folder.isEmpty()) return;
    EXPECT_TRUE(scene.window().grabWindow().save(folder + "/" + name + ".png"));
}

TEST(Parts, NothingIsCutInAnyAppearance) {
    for (const AppearanceMode mode : {AppearanceMode::dark, AppearanceMode::light})
        for (const bool isContrastIncreased : {false, true})
            for (const TextSize size : {TextSize::standard, TextSize::large, TextSize::extraLarge}) {
                Scene scene({.appearance = mode, .textSize = size});
                scene.appearance().setSystem({.isContrastIncreased = isContrastIncreased});
                QQuickItem& shown = scene.show(sheet(), {960, 800});
                const QString name =
                    QString("parts-%1-%2-%3").arg(int(mode)).arg(int(isContrastIncreased)).arg(int(size));
                keepPicture(scene, name);
                EXPECT_EQ(cutTexts(shown), "") << name.toStdString();
                EXPECT_EQ(scene.warnings(), "");
            }
}

class PartsTest : public testing::Test {
protected:
    PartsTest() { scene_.show(sheet()); }

    [[nodiscard]] std::string heard() { return scene_.item().property("heard").toString().toStdString(); }

    [[nodiscard]] static QAccessibleInterface& reader(QQuickItem& item) {
        return *QAccessible::queryAccessibleInterface(&item);
    }
    [[nodiscard]] static std::string name(QQuickItem& item) {
        return reader(item).text(QAccessible::Name).toStdString();
    }
    [[nodiscard]] std::string focused() {
        QQuickItem* item = scene_.window().activeFocusItem();
        return QAccessible::queryAccessibleInterface(item) != nullptr ? name(*item) : "nothing";
    }

    Scene scene_;
};

TEST_F(PartsTest, TheKeyboardComesToEveryPartInReadingOrder) {
    std::vector<std::string> names;
    for (int stop = 0; stop < 15; ++stop) {
        scene_.press(Qt::Key_Tab);
        names.push_back(focused());
    }
    EXPECT_THAT(names, testing::ElementsAre(
                           "Show your history", "Set up Brindle", "Week", "Export Statement\u2026",
                           "Added: +13.72 GB", "Search names and paths", "Pictures",
                           "Music and other sounds from the whole family", "Mail", "Previous day", "Next day",
                           "Sort: Most changed", "Check automatically", "Check Now", "Show your history"));
    scene_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "Check Now");
}

TEST_F(PartsTest, WhereTheKeyboardIsCanBeSeen) {
    for (int stop = 0; stop < 14; ++stop) {
        scene_.press(Qt::Key_Tab);
        QTest::qWait(20);
        const QImage image = scene_.window().grabWindow();
        const QColor ring = scene_.appearance().color(ColorToken::focusRing);
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) == ring.rgb()) ++pixels;
        EXPECT_GT(pixels, 100) << focused();
    }
}

TEST_F(PartsTest, KeysMouseAndReaderDoTheSame) {
    const std::pair<const char*, const char*> parts[] = {
        {"link", "link"},  {"bannerButton", "bannerButton"}, {"default", "default"}, {"row0", "row 0"},
        {"row2", "row 2"}, {"previous", "previous"}};
    for (const auto& [objectName, expected] : parts) {
        QQuickItem& item = scene_.item(objectName);
        const std::function<void()> ways[] = {
            [&] { scene_.click(item); }, [&] { scene_.press(Qt::Key_Return); },
            [&] { scene_.press(Qt::Key_Space); },
            [&] { reader(item).actionInterface()->doAction(QAccessibleActionInterface::pressAction()); }};
        for (const auto& way : ways) {
            scene_.item().setProperty("heard", "");
            item.forceActiveFocus(Qt::TabFocusReason);
            way();
            EXPECT_EQ(heard(), expected) << objectName << ", way " << &way - ways;
        }
    }
}

TEST_F(PartsTest, ASwitchIsTurnedByKeysMouseAndReaderAlike) {
    QQuickItem& row = scene_.item("switch");
    row.forceActiveFocus(Qt::TabFocusReason);
    QQuickItem& control = *scene_.window().activeFocusItem();
    EXPECT_EQ(reader(control).role(), QAccessible::CheckBox);
    const auto press = [&](const QString& action) { reader(control).actionInterface()->doAction(action); };
    const std::function<void()> ways[] = {[&] { scene_.click(row); }, [&] { scene_.press(Qt::Key_Return); },
                                          [&] { scene_.press(Qt::Key_Space); },
                                          [&] { press(QAccessibleActionInterface::pressAction()); },
                                          [&] { press(QAccessibleActionInterface::toggleAction()); }};
    bool isOn = true;
    for (const auto& way : ways) {
        way();
        isOn = !isOn;
        EXPECT_EQ(heard(), isOn ? "switch true" : "switch false") << "way " << &way - ways;
        EXPECT_EQ(reader(control).state().checked, isOn) << "way " << &way - ways;
    }
    scene_.click(scene_.item("disabledSwitch"));
    EXPECT_EQ(heard(), isOn ? "switch true" : "switch false");
}

TEST_F(PartsTest, ASwitchShowsWhatHoldsAlsoWhenItIsNotObeyed) {
    QQuickItem& row = scene_.item("disabledSwitch");
    row.setProperty("isEnabled", true);
    row.forceActiveFocus(Qt::TabFocusReason);
    QQuickItem& control = *scene_.window().activeFocusItem();
    const std::function<void()> ways[] = {[&] { scene_.click(row); }, [&] { scene_.press(Qt::Key_Space); }};
    for (const auto& way : ways) {
        scene_.item().setProperty("heard", "");
        way();
        EXPECT_EQ(heard(), "disabledSwitch");
        EXPECT_FALSE(reader(control).state().checked);
    }
}

TEST_F(PartsTest, AFigureThatLeadsSomewhereIsAButtonAndAnotherIsText) {
    scene_.click(scene_.item("added"));
    EXPECT_EQ(heard(), "added");
    EXPECT_EQ(reader(scene_.item("net")).role(), QAccessible::StaticText);
    EXPECT_EQ(name(scene_.item("net")), "Net change: +11.11 GB");
}

TEST_F(PartsTest, ArrowsChooseASegmentAsTheyPoint) {
    QQuickItem& segments = scene_.item("segments");
    const auto index = [&] { return segments.property("currentIndex").toInt(); };
    for (int stop = 0; stop < 3; ++stop) scene_.press(Qt::Key_Tab);
    ASSERT_EQ(focused(), "Week");
    scene_.press(Qt::Key_Left);
    EXPECT_EQ(index(), 0) << "there is nothing before the first";
    scene_.press(Qt::Key_Right);
    EXPECT_EQ(index(), 1);
    EXPECT_EQ(focused(), "Month") << "the keyboard goes along";
    scene_.press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Export Statement\u2026") << "the choice is one stop";
    scene_.press(Qt::Key_Backtab, Qt::ShiftModifier);

    scene_.item().setProperty("isMirrored", true);
    scene_.press(Qt::Key_Left);
    EXPECT_EQ(index(), 2);
}

TEST_F(PartsTest, WhatIsTypedIsLookedForAndEscapeEmptiesIt) {
    scene_.click(scene_.item("search"));
    scene_.press(Qt::Key_A);
    EXPECT_EQ(heard(), "search a");
    scene_.press(Qt::Key_Escape);
    EXPECT_EQ(heard(), "search ");
    EXPECT_EQ(scene_.item("search").property("text").toString(), "");
}

TEST_F(PartsTest, AListOfChoicesOpensAndCloses) {
    QQuickItem& choice = scene_.item("choice");
    const auto isOpen = [&] {
        return choice.property("popup").value<QObject*>()->property("visible").toBool();
    };
    choice.forceActiveFocus(Qt::TabFocusReason);
    scene_.press(Qt::Key_Return);
    EXPECT_TRUE(isOpen());
    scene_.press(Qt::Key_Down);
    scene_.press(Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(heard(), "choice 1");
    EXPECT_EQ(name(choice), "Sort: Name");
    scene_.press(Qt::Key_Space);
    EXPECT_TRUE(isOpen());
    scene_.press(Qt::Key_Down);
    scene_.press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(name(choice), "Sort: Name") << "nothing was chosen";
}

TEST_F(PartsTest, ADialogHasTheKeyboardUntilEscapeClosesIt) {
    scene_.item("previous").forceActiveFocus(Qt::TabFocusReason);
    auto* dialog = scene_.item().findChild<QObject*>("dialog");
    QMetaObject::invokeMethod(dialog, "open");
    ASSERT_TRUE(QTest::qWaitFor([&] { return focused() == "Cancel"; }));
    QTest::qWait(300);  // it is there for the keyboard before it is all there for the eye
    keepPicture(scene_, "parts-dialog");
    for (int stop = 0; stop < 3; ++stop) {
        scene_.press(Qt::Key_Tab);
        EXPECT_THAT(focused(), testing::AnyOf("Cancel", "Stop Tracking")) << "what is behind it waits";
    }
    scene_.press(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog->property("visible").toBool(); }));
    EXPECT_EQ(focused(), "Previous day");
}

TEST_F(PartsTest, EverythingIsMirrored) {
    const auto middle = [&](const char* objectName) {
        QQuickItem& item = scene_.item(objectName);
        return item.mapToScene({item.width() / 2, 0}).x();
    };
    const char* names[] = {"link", "segments", "net", "search", "choice", "row1", "switch"};
    std::vector<double> before;
    for (const char* objectName : names) before.push_back(middle(objectName));
    scene_.item().setProperty("isMirrored", true);
    QTest::qWait(50);
    keepPicture(scene_, "parts-mirrored");
    for (std::size_t index = 0; index < before.size(); ++index)
        EXPECT_NEAR(middle(names[index]), 960 - before[index], 2) << names[index];
    EXPECT_EQ(cutTexts(scene_.item()), "");
}

}  // namespace
}  // namespace brindle
