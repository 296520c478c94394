#pragma once

#include "app/EventLoop.h"
#include "app/UpdateController.h"
#include "app/UpdateServer.h"
#include "platform/WholeFile.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sodium.h>
#include <string>
#include <vector>

namespace brindle {

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

/// A program that is offered version 1.1.0 by a server of the test's own.
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
        const nlohmann::ordered_json information{
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
    UnixTime now_ = 1'800'000'000;  // Fri, 15 Jan 2027 08:00:00 UTC
    bool isBusy_ = false;
    std::string feed_;
    std::unique_ptr<UpdateController> updates_;
};

}  // namespace brindle
