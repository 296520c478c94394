#include "app/UpdatePublisher.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::HasSubstr;

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

}  // namespace
}  // namespace brindle
