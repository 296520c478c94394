#pragma once

#include "app/Appcast.h"
#include "app/HttpsDownload.h"
#include "app/PackageInstaller.h"
#include "app/UpdateKey.h"
#include "model/UnixTime.h"
#include "platform/TaskThread.h"
#include "settings/SettingValues.h"
#include "settings/SettingsFile.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace brindle {

/// Where updates come from.
struct UpdateFeed {
    QUrl address;  // https
    UpdateKey key;
};

struct UpdateLimits {
    qint64 largestFeed = qint64{1} << 18;  // read on the main thread
    qint64 largestPackage = qint64{128} << 20;
    std::chrono::milliseconds longestSilence = std::chrono::seconds(30);
    std::chrono::milliseconds longestFeed = std::chrono::minutes(1);
    std::chrono::milliseconds longestPackage = std::chrono::hours(1);
};

/// What updates need of the system and the user's settings.
struct UpdateServices {
    ProgramVersion runningVersion;
    SettingValues settings;  // as they were at launch
    SettingsFile settingsFile;
    std::string downloadFolder;  // belongs to the updater alone
    std::shared_ptr<PackageInstaller> installer;
    Clock now = systemNow;
    std::optional<QSslConfiguration> tls = {};  // nothing: the system's certificates
    UpdateLimits limits = {};

    /// For the running program. Throws std::system_error when there is no home folder.
    [[nodiscard]] static UpdateServices ofUser(SettingValues settings, SettingsFile settingsFile);
};

/// Whether a day has passed since the last check; also when that lies in the future, as it does after the
/// clock was set back.
[[nodiscard]] bool isUpdateCheckDue(std::optional<UnixTime> lastCheck, UnixTime now);

/// Looks for a newer version of the program, fetches its package and hands it to the system's installer when
/// the user wants it. A package is offered only when its length and signature are right. A feed older than
/// one seen before is refused, and a version that is not newer is none.
/// Thread: its own, which never waits. A package is written as it arrives, in small parts; it is checked, and
/// what is to be remembered is stored, on a thread of the updater's.
class Updater final : public QObject {
    Q_OBJECT

public:
    /// Is told to start the installation later. Whether it does so; else the installation starts now.
    using Postpone = std::function<bool(std::function<void()> install)>;

    Updater(UpdateFeed feed, UpdateServices services, Postpone postpone, QObject* parent = nullptr);
    /// Breaks off what is under way and waits for the file being written or read.
    ~Updater() override;

    [[nodiscard]] bool canCheck() const { return !isWorking_; }
    /// The version whose package lies ready to be installed.
    [[nodiscard]] std::optional<ProgramVersion> readyVersion() const;
    /// What is going on or what came of it, in a sentence for the user; empty at first.
    [[nodiscard]] const std::string& message() const { return message_; }

    [[nodiscard]] bool checksAutomatically() const { return checksAutomatically_; }
    void setChecksAutomatically(bool automatically);

    /// Looks for an update and fetches it; does nothing while it already does.
    void check();
    /// Looks for one when automatic checks are on and the last check was a day ago. Called every hour by the
    /// updater itself, so that a check that failed for want of a network is made up for soon.
    void checkIfDue();
    /// Hands the package that lies ready to the installer, after a check that is under way. Does nothing
    /// without a package.
    void install();

Q_SIGNALS:
    /// Any of the values above is another.
    void changed();
    /// Something that the user should know: what was set could not be stored.
    void noted(const QString& sentence);
    /// From the worker to the updater itself.
    void taskEnded(const std::function<void()>& then, QPrivateSignal);

private:
    void readFeed();
    void makePlace(const UpdateOffer& offer);
    void fetchPackage(const UpdateOffer& offer);
    void offerPackage(const UpdateOffer& offer);
    void handOver();

    void get(const QUrl& address, const DownloadLimits& limits, HttpsDownload::Sink sink,
             HttpsDownload::Done done);
    void say(const std::string& message);
    void begin(const std::string& message);
    void end(const std::string& message);
    /// Ends with the package deleted.
    void discard(const std::string& message);
    template <class Value>
    void store(const char* key, Value value);
    /// Runs the task on the worker, then the continuation here, with what the task threw.
    void inBackground(std::function<void()> task,
                      std::function<void(const std::optional<std::string>& failure)> then);
    [[nodiscard]] std::string packagePath(const UpdateOffer& offer) const;
    void requireSignature(const UpdateOffer& offer) const;  // any thread

    const UpdateFeed feed_;
    const UpdateServices services_;
    const Postpone postpone_;
    QNetworkAccessManager network_;
    QTimer nextLook_;

    bool checksAutomatically_ = true;
    std::optional<UnixTime> lastCheck_;
    std::optional<UnixTime> newestFeed_;

    bool isWorking_ = false;
    bool isInstallWanted_ = false;
    std::string message_;
    QByteArray feedText_;
    std::ofstream package_;
    std::optional<UpdateOffer> ready_;
    TaskThread worker_;  // ends before everything that its tasks use
};

}  // namespace brindle
