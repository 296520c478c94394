#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace brindle {

struct DownloadLimits {
    qint64 bytes = 0;                      // of the whole answer
    std::chrono::milliseconds silence{0};  // without a byte
    std::chrono::milliseconds whole{0};    // from the request to the end
};

/// One answer over HTTPS, given away in parts as it arrives. The request tells the program's name and version
/// and nothing else. Certificates are always checked, a redirection away from HTTPS is not followed, and what
/// passes a limit is broken off.
/// Thread: its own. Goes by itself once it is done; destroying it before breaks it off without a word.
class HttpsDownload final : public QObject {
public:
    /// What it throws breaks the download off.
    using Sink = std::function<void(const QByteArray& part)>;
    /// Called once: with nothing after all parts, else with what went wrong, as words within a sentence.
    using Done = std::function<void(const std::optional<std::string>& failure)>;

    /// `request`: its address and TLS settings. `network` outlives the download or takes it along.
    HttpsDownload(QNetworkAccessManager& network, const QNetworkRequest& request, const std::string& version,
                  const DownloadLimits& limits, Sink sink, Done done, QObject* parent);
    ~HttpsDownload() override;

private:
    void readHead();
    void readPart();
    void breakOff(const std::string& reason);
    void finish();
    [[nodiscard]] std::optional<std::string> failure() const;

    DownloadLimits limits_;
    Sink sink_;
    Done done_;
    QPointer<QNetworkReply> reply_;
    QTimer timer_;
    qint64 received_ = 0;
    std::string brokenOffFor_;
};

}  // namespace brindle
