#include "app/Updater.h"

#include "app/UpdateError.h"
#include "model/FileNameText.h"
#include "model/Translation.h"
#include "platform/Paths.h"
#include "platform/PrivateFiles.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace brindle {
namespace {

constexpr UnixTime day = 24 * 60 * 60;
constexpr auto betweenLooks = std::chrono::hours(1);
constexpr auto firstLook = std::chrono::minutes(1);  // what the user came for goes first

constexpr const char* automaticKey = "checksForUpdatesAutomatically";
constexpr const char* lastCheckKey = "lastUpdateCheck";    // seconds since 1970
constexpr const char* newestFeedKey = "newestUpdateFeed";  // likewise: the date of the newest feed seen

std::optional<UnixTime> timeIn(const SettingValues& settings, const char* key) {
    const auto seconds = settings.integer(key);
    return seconds ? std::optional(static_cast<UnixTime>(*seconds)) : std::nullopt;
}

void removeFolder(const std::string& folder) {
    std::error_code ignored;  // what stays is removed next time
    std::filesystem::remove_all(folder, ignored);
}

}  // namespace

UpdateServices UpdateServices::ofUser(SettingValues settings, SettingsFile settingsFile) {
    return {.runningVersion = ProgramVersion::from(BRINDLE_VERSION).value(),
            .settings = std::move(settings),
            .settingsFile = std::move(settingsFile),
            .downloadFolder = joinedPath(cacheHome(), "Brindle/updates"),
            .installer = std::make_shared<SystemPackageInstaller>()};
}

bool isUpdateCheckDue(std::optional<UnixTime> lastCheck, UnixTime now) {
    return !lastCheck || now < *lastCheck || now - *lastCheck >= day;
}

template <class Value>
void Updater::store(const char* key, Value value) {
    const auto write = [file = services_.settingsFile, key, value] {
        if (const auto note = file.write(key, value)) throw SettingsError(*note);
    };
    inBackground(write, [this](const auto& failure) {
        if (failure) Q_EMIT noted(QString::fromStdString(*failure));
    });
}

Updater::Updater(UpdateFeed feed, UpdateServices services, Postpone postpone, QObject* parent)
    : QObject(parent),
      feed_(std::move(feed)),
      services_(std::move(services)),
      postpone_(std::move(postpone)),
      checksAutomatically_(services_.settings.boolean(automaticKey).value_or(true)),
      lastCheck_(timeIn(services_.settings, lastCheckKey)),
      newestFeed_(timeIn(services_.settings, newestFeedKey)),
      worker_("Brindle.updates") {
    connect(
        this, &Updater::taskEnded, this, [](const std::function<void()>& then) { then(); },
        Qt::QueuedConnection);
    nextLook_.setTimerType(Qt::VeryCoarseTimer);
    connect(&nextLook_, &QTimer::timeout, this, [this] {
        nextLook_.start(betweenLooks);
        checkIfDue();
    });
    nextLook_.start(firstLook);
}

Updater::~Updater() {
    if (isWorking_ && !ready_)
        (void)worker_.perform([folder = services_.downloadFolder] { removeFolder(folder); });
}

std::optional<ProgramVersion> Updater::readyVersion() const {
    return ready_ ? std::optional(ready_->version) : std::nullopt;
}

void Updater::setChecksAutomatically(bool automatically) {
    if (automatically == checksAutomatically_) return;
    checksAutomatically_ = automatically;
    Q_EMIT changed();
    store(automaticKey, automatically);
    checkIfDue();
}

void Updater::checkIfDue() {
    if (checksAutomatically_ && isUpdateCheckDue(lastCheck_, services_.now())) check();
}

void Updater::check() {
    if (isWorking_) return;
    begin(translated("Checking for updates…"));
    feedText_.clear();
    const auto& limits = services_.limits;
    get(
        feed_.address,
        {.bytes = limits.largestFeed, .silence = limits.longestSilence, .whole = limits.longestFeed},
        [this](const QByteArray& part) { feedText_ += part; },
        [this](const auto& failure) {
            if (failure)
                return end(filled(translated("The list of updates couldn't be fetched ({})."), *failure));
            try {
                readFeed();
            } catch (const UpdateError& error) {
                end(error.what());
            }
        });
}

void Updater::readFeed() {
    const UnixTime now = services_.now();
    lastCheck_ = now;
    store(lastCheckKey, std::llround(now));

    const Appcast feed = parseAppcast(feedText_);
    if (newestFeed_ && feed.date < *newestFeed_)
        throw UpdateError(translated("The list of updates is older than one that was seen before."));
    // A date that lies ahead by mistake must not make every later feed an old one.
    newestFeed_ = std::max(newestFeed_.value_or(0), std::min(feed.date, now));
    store(newestFeedKey, std::llround(*newestFeed_));

    if (!feed.newest || feed.newest->version <= services_.runningVersion) {
        ready_.reset();
        return discard(
            filled(translated("Brindle {} is the newest version."), services_.runningVersion.text()));
    }
    if (ready_ == feed.newest)
        return end(filled(translated("Brindle {} is ready to install."), ready_->version.text()));
    if (feed.newest->length > services_.limits.largestPackage)
        throw UpdateError(
            filled(translated("Brindle {} is too large to download."), feed.newest->version.text()));
    makePlace(*feed.newest);
}

void Updater::makePlace(const UpdateOffer& offer) {
    ready_.reset();
    begin(filled(translated("Downloading Brindle {}…"), offer.version.text()));
    const auto prepare = [folder = services_.downloadFolder, path = packagePath(offer)] {
        removeFolder(folder);  // also what a program that was killed has left
        createPrivateDirectory(folder);
        createPrivateFile(path);
    };
    inBackground(prepare, [this, offer](const auto& failure) {
        if (failure)
            return discard(filled(translated("The update can't be stored ({})."), fileNameText(*failure)));
        fetchPackage(offer);
    });
}

void Updater::fetchPackage(const UpdateOffer& offer) {
    package_.open(packagePath(offer), std::ios::binary | std::ios::app);
    const auto& limits = services_.limits;
    get(
        offer.package,
        {.bytes = offer.length, .silence = limits.longestSilence, .whole = limits.longestPackage},
        [this](const QByteArray& part) {
            if (!package_.write(part.constData(), part.size()))
                throw UpdateError(translated("it can't be written to the disk"));
        },
        [this, offer](const auto& failure) {
            package_.close();
            if (failure)
                return discard(filled(translated("Brindle {0} couldn't be downloaded ({1})."),
                                      offer.version.text(), *failure));
            offerPackage(offer);
        });
}

void Updater::offerPackage(const UpdateOffer& offer) {
    inBackground([this, offer] { requireSignature(offer); },
                 [this, offer](const auto& failure) {
                     if (failure) return discard(*failure);
                     ready_ = offer;
                     end(filled(translated("Brindle {} is ready to install."), offer.version.text()));
                 });
}

void Updater::install() {
    if (isWorking_) {
        isInstallWanted_ = true;
        return;
    }
    if (!ready_) return;
    begin(filled(translated("Installing Brindle {}…"), ready_->version.text()));
    // It may have lain there for days.
    inBackground([this, offer = *ready_] { requireSignature(offer); },
                 [this](const auto& failure) {
                     if (!failure) return handOver();
                     ready_.reset();
                     discard(*failure);
                 });
}

void Updater::handOver() {
    isInstallWanted_ = false;  // whoever asked a second time meanwhile
    const auto installLater = [updater = QPointer<Updater>(this)] {
        if (updater) updater->install();
    };
    if (postpone_(installLater))
        return end(filled(translated("Brindle {} will be installed when the check has finished."),
                          ready_->version.text()));
    const std::string path = packagePath(*ready_);
    end(filled(translated("Brindle {} was handed to the system's installer."), ready_->version.text()));
    services_.installer->install(path, [updater = QPointer<Updater>(this), path](bool isTaken) {
        if (updater && !isTaken)
            updater->say(filled(translated("No program that installs packages was found for “{}”."),
                                fileNameText(path)));
    });
}

void Updater::get(const QUrl& address, const DownloadLimits& limits, HttpsDownload::Sink sink,
                  HttpsDownload::Done done) {
    QNetworkRequest request(address);
    if (services_.tls) request.setSslConfiguration(*services_.tls);
    new HttpsDownload(network_, request, services_.runningVersion.text(), limits, std::move(sink),
                      std::move(done), this);
}

void Updater::say(const std::string& message) {
    message_ = message;
    Q_EMIT changed();
}

void Updater::begin(const std::string& message) {
    isWorking_ = true;
    say(message);
}

void Updater::end(const std::string& message) {
    isWorking_ = false;
    say(message);
    if (std::exchange(isInstallWanted_, false)) install();
}

void Updater::discard(const std::string& message) {
    inBackground([folder = services_.downloadFolder] { removeFolder(folder); },
                 [this, message](const auto& /*never*/) { end(message); });
}

void Updater::inBackground(std::function<void()> task,
                           std::function<void(const std::optional<std::string>&)> then) {
    (void)worker_.perform([this, task = std::move(task), then = std::move(then)] {
        std::optional<std::string> failure;
        try {
            task();
        } catch (const std::exception& error) {
            failure = error.what();
        }
        Q_EMIT taskEnded([then, failure] { then(failure); }, QPrivateSignal());
    });
}

std::string Updater::packagePath(const UpdateOffer& offer) const {
    return joinedPath(services_.downloadFolder, offer.fileName);
}

void Updater::requireSignature(const UpdateOffer& offer) const {
    if (!feed_.key.hasSigned(packagePath(offer), static_cast<std::size_t>(offer.length), offer.signature))
        throw UpdateError(
            filled(translated("Brindle {} was deleted, because its publisher's signature doesn't fit."),
                   offer.version.text()));
}

}  // namespace brindle
