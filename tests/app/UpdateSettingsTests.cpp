#include "app/UpdatePublisher.h"
#include "app/pages/UpdateSettings.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

namespace brindle {
namespace {

using Json = nlohmann::ordered_json;
using Unavailable = UpdateController::Unavailable;

constexpr UnixTime day = 86400;

TEST_F(Updates, AreLookedForOnceADay) {
    updates_.reset();
    const Json stored{{"lastUpdateCheck", static_cast<std::int64_t>(now_)}};
    const auto lookAt = [&](UnixTime now, const Json& settings) {
        const auto before = server_.requests.size();
        Updater updater({QUrl(server_.address("/feed.xml")), *UpdateKey::from(publisher_.publicKey())},
                        {.runningVersion = ProgramVersion::from("2").value(),
                         .settings = SettingValues(settings),
                         .settingsFile = SettingsFile(folder_.path() / "looks.json"),
                         .downloadFolder = downloads_,
                         .installer = installer_,
                         .now = [now] { return now; },
                         .tls = server_.client()},
                        [](const auto&) { return false; });
        updater.checkIfDue();
        EXPECT_TRUE(runUntil([&] { return updater.canCheck(); }));
        updater.checkIfDue();
        EXPECT_TRUE(updater.canCheck()) << "the same day";
        return server_.requests.size() - before;
    };
    EXPECT_EQ(lookAt(now_, Json::object()), 1U);
    EXPECT_EQ(lookAt(now_ + day - 1, stored), 0U);
    EXPECT_EQ(lookAt(now_ + day, stored), 1U);
    EXPECT_EQ(lookAt(now_ - 1, stored), 1U);  // the clock was set back
    EXPECT_EQ(SettingsFile(folder_.path() / "looks.json").read().values["lastUpdateCheck"], now_ - 1);
    Json off = stored;
    off["checksForUpdatesAutomatically"] = false;
    EXPECT_EQ(lookAt(now_ + day, off), 0U);

    start();
    EXPECT_TRUE(updates_->checksAutomatically());
    updates_->setChecksAutomatically(false);
    start();
    EXPECT_FALSE(updates_->checksAutomatically());
    EXPECT_TRUE(updates_->canCheckForUpdates());
    const auto before = server_.requests.size();
    updates_->setChecksAutomatically(true);
    ended();
    EXPECT_GT(server_.requests.size(), before) << "switched on when one is due";

    std::filesystem::remove(folder_.path() / "preferences.json");
    std::filesystem::create_symlink("elsewhere", folder_.path() / "preferences.json");
    QString note;
    QObject::connect(updates_.get(), &UpdateController::noted, [&note](const QString& said) { note = said; });
    updates_->setChecksAutomatically(false);
    EXPECT_TRUE(runUntil([&note] { return note.contains("symbolic link"); }));
    EXPECT_FALSE(updates_->checksAutomatically());
}

TEST_F(Updates, AreSeenAndActedOnInTheSettings) {
    UpdateSettings settings(*updates_);
    EXPECT_TRUE(settings.isAvailable());
    EXPECT_TRUE(settings.checksAutomatically());
    EXPECT_EQ(settings.message(), "");
    EXPECT_FALSE(settings.hasUpdate() || settings.canInstall());

    settings.checkNow();
    EXPECT_EQ(settings.message(), "Checking for updates…");
    EXPECT_FALSE(settings.canCheckNow());
    static_cast<void>(ended());
    EXPECT_EQ(settings.message(), "Brindle 1.1.0 is ready to install.");
    EXPECT_TRUE(settings.canInstall());
    EXPECT_EQ(settings.installTitle(), "Install Brindle 1.1.0");

    isBusy_ = true;
    settings.install();
    static_cast<void>(ended());
    EXPECT_EQ(settings.message(), "Brindle 1.1.0 will be installed when the check has finished.");
    EXPECT_TRUE(settings.hasUpdate());
    EXPECT_FALSE(settings.canInstall()) << "it is to be installed already";
    isBusy_ = false;
    updates_->runPostponedInstall();
    ASSERT_TRUE(runUntil([&] { return !installer_->contents.empty(); }));

    settings.setChecksAutomatically(false);
    start();
    EXPECT_FALSE(updates_->checksAutomatically());
}

TEST_F(Updates, AreUnavailableWithoutAFeedAndAKey) {
    const std::string https = "https://localhost/feed.xml";
    const std::string key = publisher_.publicKey();
    const struct {
        bool tracking;
        Json information;
        std::optional<Unavailable> unavailable;
    } cases[] = {
        {false, {{"SUFeedURL", https}, {"SUPublicEDKey", key}}, Unavailable::developmentBuild},
        {false, Json::object(), Unavailable::developmentBuild},
        {true, Json::object(), Unavailable::notConfigured},
        {true, {{"SUFeedURL", https}}, Unavailable::notConfigured},
        {true, {{"SUFeedURL", https}, {"SUPublicEDKey", ""}}, Unavailable::notConfigured},
        {true, {{"SUFeedURL", https}, {"SUPublicEDKey", "no key"}}, Unavailable::notConfigured},
        {true, {{"SUFeedURL", https}, {"SUPublicEDKey", 5}}, Unavailable::notConfigured},
        {true, {{"SUPublicEDKey", key}}, Unavailable::notConfigured},
        {true,
         {{"SUFeedURL", "http://localhost/feed.xml"}, {"SUPublicEDKey", key}},
         Unavailable::notConfigured},
        {true, {{"SUFeedURL", "localhost/feed.xml"}, {"SUPublicEDKey", key}}, Unavailable::notConfigured},
        {true, {{"SUFeedURL", "https://"}, {"SUPublicEDKey", key}}, Unavailable::notConfigured},
        {true, {{"SUFeedURL", Json::array({https})}, {"SUPublicEDKey", key}}, Unavailable::notConfigured},
        {true, {{"SUFeedURL", https}, {"SUPublicEDKey", key}}, std::nullopt},
    };
    for (const auto& [tracking, information, unavailable] : cases) {
        SCOPED_TRACE(information);
        const UpdateController updates(
            tracking, SettingValues(information),
            UpdateServices::ofUser(SettingValues(), SettingsFile(folder_.path() / "none")),
            [] { return false; });
        EXPECT_EQ(updates.unavailable(), unavailable);
        EXPECT_EQ(updates.canCheckForUpdates(), !unavailable);
        EXPECT_EQ(updates.checksAutomatically(), !unavailable);
    }
    UpdateController none(true, SettingValues(),
                          UpdateServices::ofUser(SettingValues(), SettingsFile(folder_.path() / "none")),
                          [] { return false; });
    none.checkForUpdates();
    none.setChecksAutomatically(true);
    none.install();
    none.runPostponedInstall();
    EXPECT_EQ(none.message(), "");
}

}  // namespace
}  // namespace brindle
