#include "app/EventLoop.h"
#include "app/UpdateController.h"
#include "app/UpdateServer.h"
#include "app/pages/UpdateSettings.h"
#include "platform/WholeFile.h"
#include "support/Program.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sodium.h>

namespace brindle {
namespace {

using testing::HasSubstr;
using Json = nlohmann::ordered_json;
using Unavailable = UpdateController::Unavailable;

constexpr UnixTime today = 1'800'000'000;  // Fri, 15 Jan 2027 08:00:00 UTC
constexpr UnixTime day = 86400;

/// A publisher's pair of keys.
class Publisher {
public:
    Publisher() {
        if (sodium_init() < 0) throw std::runtime_error("libsodium cannot be used");
        crypto_sign_keypair(publicKey_.data(), secretKey_.data());
    }

    [[nodiscard]] std::string publicKey() const {
        return QByteArray(reinterpret_cast<const char*>(publicKey_.data()), crypto_sign_PUBLICKEYBYTES)
            .toBase64()
            .toStdString();
    }
    [[nodiscard]] QByteArray signatureOf(const QByteArray& package) const {
        QByteArray signature(crypto_sign_BYTES, '\0');
        crypto_sign_detached(reinterpret_cast<unsigned char*>(signature.data()), nullptr,
                             reinterpret_cast<const unsigned char*>(package.constData()),
                             static_cast<unsigned long long>(package.size()), secretKey_.data());
        return signature.toBase64();
    }

private:
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey_{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey_{};
};

/// Keeps what it is given and takes it or not.
class RecordingInstaller final : public PackageInstaller {
public:
    void install(const std::string& package, Done done) override {
        contents.push_back(readWholeFile(package, 1U << 20U).value_or(""));
        done(takes);
    }

    std::vector<std::string> contents;
    bool takes = true;
};

class Updates : public testing::Test {
protected:
    Updates() {
        server_.answers["/brindle.deb"] = {.body = package_};
        publish("1.1.0");
        start();
    }

    /// An item of a feed that offers the package.
    [[nodiscard]] QByteArray item(const QByteArray& version, const QByteArray& date) const {
        return "<item><pubDate>" + date + "</pubDate><u:version>" + version +
               "</u:version><enclosure url=\"" + server_.address("/brindle.deb").toLatin1() + "\" length=\"" +
               QByteArray::number(package_.size()) + "\" u:edSignature=\"" +
               publisher_.signatureOf(package_) + "\"/></item>";
    }
    void publish(const QByteArray& version, const QByteArray& date = "Thu, 14 Jan 2027 12:00:00 +0000") {
        publishItems(item(version, date));
    }
    void publishItems(const QByteArray& items) {
        server_.answers["/feed.xml"] = {.body = "<?xml version=\"1.0\"?><rss xmlns:u=\"urn:any\"><channel>" +
                                                items + "</channel></rss>"};
    }

    /// What a new start of the program brings, with what is stored by now.
    void start() {
        updates_.reset();
        const SettingsFile file(folder_.path() / "preferences.json");
        const UpdateServices services{.runningVersion = ProgramVersion::from("1.0.0").value(),
                                      .settings = SettingValues(file.read().values),
                                      .settingsFile = file,
                                      .downloadFolder = downloads_,
                                      .installer = installer_,
                                      .now = [this] { return now_; },
                                      .tls = server_.client(),
                                      .limits = limits_};
        const Json information{
            {"SUFeedURL", feed_.empty() ? server_.address("/feed.xml").toStdString() : feed_},
            {"SUPublicEDKey", publisher_.publicKey()}};
        updates_ = std::make_unique<UpdateController>(true, SettingValues(information), services,
                                                      [this] { return isBusy_; });
    }
    /// Checks, and tells what came of it.
    std::string check() {
        updates_->checkForUpdates();
        EXPECT_FALSE(updates_->canCheckForUpdates());
        return ended();
    }
    std::string ended() {
        EXPECT_TRUE(runUntil([this] { return updates_->canCheckForUpdates(); }));
        return updates_->message().toStdString();
    }
    [[nodiscard]] bool hasDownloads() const { return std::filesystem::exists(downloads_); }

    const QByteArray package_ = "the package of 1.1.0";
    const Publisher publisher_;
    TempFolder folder_;
    const std::string downloads_ = folder_.path() / "cache/updates";
    UpdateServer server_;
    const std::shared_ptr<RecordingInstaller> installer_ = std::make_shared<RecordingInstaller>();
    UpdateLimits limits_{.largestFeed = 1 << 16,
                         .largestPackage = 1 << 20,
                         .longestSilence = std::chrono::seconds(2),
                         .longestFeed = std::chrono::seconds(3),
                         .longestPackage = std::chrono::seconds(3)};
    UnixTime now_ = today;
    bool isBusy_ = false;
    std::string feed_;
    std::unique_ptr<UpdateController> updates_;
};

TEST_F(Updates, AreFetchedCheckedAndHandedOver) {
    EXPECT_EQ(check(), "Brindle 1.1.0 is ready to install.");
    EXPECT_EQ(updates_->readyVersion(), "1.1.0");
    EXPECT_EQ(std::filesystem::status(downloads_).permissions(), std::filesystem::perms::owner_all);
    EXPECT_TRUE(installer_->contents.empty()) << "nothing is installed unless the user wants it";

    ASSERT_EQ(server_.requests.size(), 2U);
    for (const auto& request : server_.requests)
        EXPECT_EQ(request.mid(request.indexOf('\n') + 1),
                  "Host: localhost:" + QByteArray::number(server_.serverPort()) +
                      "\r\nUser-Agent: Brindle/1.0.0\r\nAccept-Language: *\r\nAccept-Encoding: identity\r\n"
                      "Connection: Keep-Alive\r\n\r\n");

    EXPECT_EQ(check(), "Brindle 1.1.0 is ready to install.");
    EXPECT_EQ(server_.requests.size(), 3U) << "what lies ready is not fetched again";
    updates_->install();
    updates_->install();
    EXPECT_EQ(ended(), "Brindle 1.1.0 was handed to the system's installer.");
    EXPECT_EQ(installer_->contents, std::vector{package_.toStdString()});

    publish("1.0.0");
    EXPECT_EQ(check(), "Brindle 1.0.0 is the newest version.");
    EXPECT_FALSE(hasDownloads());
    updates_->install();
    EXPECT_EQ(installer_->contents.size(), 1U);
}

TEST_F(Updates, AreNotOfferedWhenAnythingIsWrong) {
    const QByteArray date = "Thu, 14 Jan 2027 12:00:00 +0000";
    const QByteArray good = item("1.1.0", date);
    const QByteArray huge(1 << 17, ' ');
    const auto with = [&good](const QByteArray& before, const QByteArray& after) {
        EXPECT_TRUE(good.contains(before));
        return QByteArray(good).replace(before, after);
    };
    const QByteArray length = "length=\"" + QByteArray::number(package_.size()) + "\"";
    const QByteArray url = server_.address("/brindle.deb").toLatin1();
    const auto badSignature = publisher_.signatureOf("another package");
    const char* damaged = "The list of updates is damaged.";
    const char* misfit = "Brindle 1.1.0 was deleted, because its publisher's signature doesn't fit.";
    const struct {
        const char* name;
        QByteArray items;
        UpdateAnswer package;
        const char* message;
    } cases[] = {
        {"WrongSignature", with(publisher_.signatureOf(package_), badSignature), {.body = package_}, misfit},
        {"SignatureOfAnotherPublisher",
         with(publisher_.signatureOf(package_), Publisher().signatureOf(package_)),
         {.body = package_},
         misfit},
        {"Altered", good, {.body = QByteArray(package_).replace("1.1.0", "6.6.6")}, misfit},
        {"Shorter", good, {.body = package_.chopped(1)}, misfit},
        {"Truncated",
         good,
         {.body = package_.chopped(5), .announcedLength = package_.size()},
         "Brindle 1.1.0 couldn't be downloaded"},
        {"Longer", good, {.body = package_ + "."}, "(it is too large)"},
        {"Endless", good, {.body = package_, .neverEnds = true}, "(it is too large)"},
        {"Silent", good, {.body = "", .keepsSilent = true}, "(it took too long)"},
        {"Missing", good, {.body = package_, .status = "404 Not Found"}, "Not Found"},
        {"NoContent",
         good,
         {.body = package_, .status = "203 Not Mine"},
         "Brindle 1.1.0 couldn't be downloaded"},
        {"ToHttp",
         good,
         {.body = "", .status = "302 Found", .header = "Location: http://localhost:9/b.deb"},
         "Brindle 1.1.0 couldn't be downloaded"},
        {"ToFile",
         good,
         {.body = "", .status = "302 Found", .header = "Location: file:///etc/hostname"},
         "Brindle 1.1.0 couldn't be downloaded"},
        {"TooLarge",
         with(length, "length=\"1048577\""),
         {.body = ""},
         "Brindle 1.1.0 is too large to download."},
        {"SameVersion", item("1.0", date), {.body = package_}, "Brindle 1.0.0 is the newest version."},
        {"OlderVersion", item("0.9.9", date), {.body = package_}, "Brindle 1.0.0 is the newest version."},
        {"OtherSystem",
         with(length, length + " u:os=\"macos\""),
         {.body = package_},
         "Brindle 1.0.0 is the newest version."},
        {"NoSignature", with("edSignature", "signature"), {.body = package_}, damaged},
        {"NoLength", with(length, ""), {.body = package_}, damaged},
        {"NoVersion", item("newest", date), {.body = package_}, damaged},
        {"PlainHttp", with("https:", "http:"), {.body = package_}, damaged},
        {"NameOfAnOption", with(url, server_.address("/-rf").toLatin1()), {.body = package_}, damaged},
        {"NameWithBlanks",
         with(url, server_.address("/brindle%20$(x).deb").toLatin1()),
         {.body = package_},
         damaged},
        {"NoDate", with("pubDate", "when").replace("/pubDate", "/when"), {.body = package_}, damaged},
        {"NoXml", good + "<open>", {.body = package_}, damaged},
        {"Huge", good + huge, {.body = package_}, "(it is too large)"},
    };
    for (const auto& [name, items, package, message] : cases) {
        SCOPED_TRACE(name);
        publishItems(items);
        server_.answers["/brindle.deb"] = package;
        EXPECT_THAT(check(), HasSubstr(message));
        EXPECT_EQ(updates_->readyVersion(), "");
        EXPECT_FALSE(hasDownloads());
    }
    server_.answers["/brindle.deb"] = {.body = package_};
    publishItems(good);
    EXPECT_EQ(check(), "Brindle 1.1.0 is ready to install.");
}

TEST_F(Updates, NeedAFeedThatCanBeTrusted) {
    const UpdateAnswer good = server_.answers["/feed.xml"];
    const struct {
        const char* name;
        UpdateAnswer feed;
        const char* message;
    } cases[] = {
        {"Endless", {.body = "<rss>", .neverEnds = true}, "(it is too large)"},
        {"Silent", {.body = "", .keepsSilent = true}, "(it took too long)"},
        {"ToHttp",
         {.body = "", .status = "301 Moved", .header = "Location: http://localhost:9/feed.xml"},
         "The list of updates couldn't be fetched"},
        {"Failing", {.body = good.body, .status = "500 Out of Order"}, "Out of Order"},
        {"Empty", {.body = ""}, "The list of updates is damaged."},
        {"Entities",
         {.body = "<!DOCTYPE rss [<!ENTITY a \"b\">]>" + good.body.mid(21)},
         "The list of updates is damaged."},
    };
    for (const auto& [name, feed, message] : cases) {
        SCOPED_TRACE(name);
        server_.answers["/feed.xml"] = feed;
        EXPECT_THAT(check(), HasSubstr(message));
    }
    server_.answers["/feed.xml"] = {
        .body = "", .status = "302 Found", .header = "Location: " + server_.address("/moved.xml").toLatin1()};
    server_.answers["/moved.xml"] = good;
    EXPECT_EQ(check(), "Brindle 1.1.0 is ready to install.");
}

TEST_F(Updates, AreNotFetchedFromAStranger) {
    feed_ = QString("https://127.0.0.1:%1/feed.xml").arg(server_.serverPort()).toStdString();
    start();
    EXPECT_THAT(check(), HasSubstr("couldn't be fetched"));  // the certificate names another host
    feed_.clear();
    UpdateServer other;
    feed_ = other.address("/feed.xml").toStdString();
    start();
    EXPECT_THAT(check(), HasSubstr("couldn't be fetched"));  // and here it is not the trusted one
    other.close();
    EXPECT_THAT(check(), HasSubstr("couldn't be fetched"));  // nobody there
    EXPECT_TRUE(server_.requests.empty() && other.requests.empty());
}

TEST_F(Updates, OlderFeedsThanOneSeenBeforeAreRefused) {
    publish("1.0.0", "Thu, 14 Jan 2027 12:00:01 +0000");
    EXPECT_EQ(check(), "Brindle 1.0.0 is the newest version.");
    publish("1.1.0", "Thu, 14 Jan 2027 14:00:00 +0200");
    start();
    EXPECT_EQ(check(), "The list of updates is older than one that was seen before.");
    EXPECT_EQ(server_.requests.size(), 2U);

    // A date in the future counts as today's, or no later feed would ever be taken.
    publish("1.0.0", "Thu, 14 Jan 2077 12:00:00 +0000");
    EXPECT_EQ(check(), "Brindle 1.0.0 is the newest version.");
    publish("1.1.0", "Fri, 15 Jan 2027 08:00:01 +0000");
    EXPECT_EQ(check(), "Brindle 1.1.0 is ready to install.");
}

TEST_F(Updates, WaitForACheckOfFilesToFinish) {
    check();
    isBusy_ = true;
    updates_->install();
    EXPECT_EQ(ended(), "Brindle 1.1.0 will be installed when the check has finished.");
    EXPECT_TRUE(installer_->contents.empty());
    EXPECT_TRUE(updates_->hasPostponedInstall());

    // It may end while the updater looks for something newer.
    updates_->checkForUpdates();
    isBusy_ = false;
    updates_->runPostponedInstall();
    EXPECT_FALSE(updates_->hasPostponedInstall());
    updates_->runPostponedInstall();
    EXPECT_TRUE(runUntil([this] { return !installer_->contents.empty(); }));
    EXPECT_EQ(ended(), "Brindle 1.1.0 was handed to the system's installer.");
    EXPECT_EQ(installer_->contents, std::vector{package_.toStdString()});

    // What lay there is looked at again.
    std::ofstream(downloads_ + "/brindle.deb") << "another package!!!!!";
    updates_->install();
    EXPECT_THAT(ended(), HasSubstr("signature doesn't fit"));
    EXPECT_EQ(installer_->contents.size(), 1U);
    EXPECT_EQ(updates_->readyVersion(), "");

    check();
    installer_->takes = false;
    updates_->install();
    EXPECT_EQ(ended(), "No program that installs packages was found for “" + downloads_ + "/brindle.deb”.");
}

TEST_F(Updates, AreBrokenOffWithTheProgram) {
    server_.answers["/brindle.deb"] = {.body = package_.chopped(1), .keepsSilent = true};
    updates_->checkForUpdates();
    EXPECT_TRUE(runUntil([this] { return server_.requests.size() == 2; }));
    EXPECT_TRUE(hasDownloads());
    updates_.reset();
    EXPECT_FALSE(hasDownloads());
}

TEST_F(Updates, AreLookedForOnceADay) {
    updates_.reset();
    const Json stored{{"lastUpdateCheck", static_cast<std::int64_t>(today)}};
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
    EXPECT_EQ(lookAt(today, Json::object()), 1U);
    EXPECT_EQ(lookAt(today + day - 1, stored), 0U);
    EXPECT_EQ(lookAt(today + day, stored), 1U);
    EXPECT_EQ(lookAt(today - 1, stored), 1U);  // the clock was set back
    EXPECT_EQ(SettingsFile(folder_.path() / "looks.json").read().values["lastUpdateCheck"], today - 1);
    Json off = stored;
    off["checksForUpdatesAutomatically"] = false;
    EXPECT_EQ(lookAt(today + day, off), 0U);

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

TEST(ProgramVersion, IsComparedByNumbersAndThenByWhatComesBefore) {
    const std::vector<std::vector<const char*>> ascending{
        {"0", "0.0"}, {"0.9"}, {"1~alpha"}, {"1.0~beta2"}, {"1.0.0~beta10"}, {"1", "1.0", "1.0.0"},
        {"1.0.1"},    {"1.2"}, {"1.10"},    {"2"},         {"2026.11.21"}};
    for (std::size_t i = 0; i < ascending.size(); ++i)
        for (std::size_t j = 0; j < ascending.size(); ++j)
            for (const char* left : ascending[i])
                for (const char* right : ascending[j])
                    EXPECT_EQ(ProgramVersion::from(left).value() <=> ProgramVersion::from(right).value(),
                              i <=> j)
                        << left << " and " << right;
    for (const char* none :
         {"", "v1", "1.", ".1", "1..2", "-1", "1 ", "1.0-2", "1~", "1~beta2x", "1~2", "4294967296"})
        EXPECT_EQ(ProgramVersion::from(none), std::nullopt) << none;
}

// The commands of docs/UPDATES.md.
TEST(UpdateKey, FitsSignaturesMadeWithOpenssl) {
    const TempFolder folder;
    const std::string script =
        "openssl genpkey -algorithm ed25519 -out key.pem && printf 'a package' >brindle.deb &&"
        "openssl pkey -in key.pem -pubout -outform DER | tail -c 32 | base64 &&"
        "openssl pkeyutl -sign -inkey key.pem -rawin -in brindle.deb | base64 -w 0";
    const auto result = runProgram(
        {.arguments = {"sh", "-c", script}, .environment = {"PATH=/usr/bin:/bin"}, .folder = folder.path()});
    ASSERT_EQ(result.exitCode, 0) << result.error;
    const auto lines = QByteArray::fromStdString(result.output).split('\n');
    const auto key = UpdateKey::from(lines.at(0).toStdString());
    const auto signature = QByteArray::fromBase64(lines.at(1));
    const std::string package = folder.path() / "brindle.deb";
    ASSERT_TRUE(key);
    EXPECT_TRUE(key->hasSigned(package, 9, signature));
    EXPECT_FALSE(key->hasSigned(package, 8, signature));
    EXPECT_FALSE(key->hasSigned(package + ".gone", 9, signature));
    EXPECT_FALSE(key->hasSigned(package, 9, signature.chopped(1)));
}

}  // namespace
}  // namespace brindle
