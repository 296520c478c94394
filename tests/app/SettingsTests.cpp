#include "app/EventLoop.h"
#include "app/Settings.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

namespace brindle {
namespace {

class SettingsTest : public testing::Test {
protected:
    [[nodiscard]] Preferences stored() const {
        return readPreferences(SettingValues(SettingsFile(path_).read().values));
    }

    TempFolder folder_;
    std::string path_ = (folder_.path() / "preferences.json").string();
};

TEST_F(SettingsTest, WhatIsSetIsStoredAndToldOnce) {
    {
        Settings settings({}, SettingsFile(path_));
        int told = 0;
        QObject::connect(&settings, &Settings::checkIntervalChanged, [&] { ++told; });
        QObject::connect(&settings, &Settings::appearanceChanged, [&] { ++told; });
        for (const int minutes : {15, 15, 7, 30, 60}) settings.setCheckInterval(minutes);
        settings.setAppearance(AppearanceMode::light);
        settings.setShowsMenuBarItem(false);
        EXPECT_EQ(settings.checkInterval(), 60);
        EXPECT_EQ(told, 4) << "neither the same again nor what is no choice";
    }
    EXPECT_EQ(
        stored(),
        (Preferences{.appearance = AppearanceMode::light, .checkInterval = 60, .showsMenuBarItem = false}));
}

TEST_F(SettingsTest, WhatCannotBeStoredHoldsForThisLaunchAndIsSaid) {
    std::ofstream(folder_.path() / "file") << "in the way of a folder";
    Settings settings({}, SettingsFile((folder_.path() / "file/preferences.json").string()));
    std::optional<QString> note;
    QObject::connect(&settings, &Settings::noted, &settings, [&](const QString& text) { note = text; });
    settings.setChecksPaused(true);
    ASSERT_TRUE(runUntil([&] { return note.has_value(); }));
    EXPECT_TRUE(settings.checksPaused());
    EXPECT_TRUE(note->endsWith(".")) << note->toStdString();
}

}  // namespace
}  // namespace brindle
