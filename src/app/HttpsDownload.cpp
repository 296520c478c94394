#include "app/HttpsDownload.h"

#include "model/FileNameText.h"
#include "model/Translation.h"

#include <exception>
#include <utility>

namespace brindle {
namespace {

constexpr int mostRedirections = 5;
constexpr qint64 readBuffer = 1 << 18;  // bytes: what one turn of the event loop may have to write

QNetworkRequest prepared(QNetworkRequest request, const std::string& version,
                         std::chrono::milliseconds silence) {
    request.setHeader(QNetworkRequest::UserAgentHeader, QString::fromStdString("Brindle/" + version));
    // Qt would tell the user's language, and unpack an answer of any size.
    request.setRawHeader("Accept-Language", "*");
    request.setRawHeader("Accept-Encoding", "identity");
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirections);
    request.setTransferTimeout(static_cast<int>(silence.count()));
    return request;
}

}  // namespace

HttpsDownload::HttpsDownload(QNetworkAccessManager& network, const QNetworkRequest& request,
                             const std::string& version, const DownloadLimits& limits, Sink sink, Done done,
                             QObject* parent)
    : QObject(parent),
      limits_(limits),
      sink_(std::move(sink)),
      done_(std::move(done)),
      reply_(network.get(prepared(request, version, limits.silence))) {
    reply_->setReadBufferSize(readBuffer);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &HttpsDownload::readHead);
    connect(reply_, &QNetworkReply::readyRead, this, &HttpsDownload::readPart);
    connect(reply_, &QNetworkReply::finished, this, &HttpsDownload::finish);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { breakOff(translated("it took too long")); });
    timer_.start(limits.whole);
}

HttpsDownload::~HttpsDownload() {
    if (!reply_) return;
    reply_->disconnect(this);
    reply_->abort();
    reply_->deleteLater();
}

void HttpsDownload::readHead() {
    if (reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong() > limits_.bytes)
        breakOff(translated("it is too large"));
}

void HttpsDownload::readPart() {
    const QByteArray part = reply_->readAll();
    received_ += part.size();
    if (received_ > limits_.bytes) return breakOff(translated("it is too large"));
    try {
        sink_(part);
    } catch (const std::exception& error) {
        breakOff(error.what());
    }
}

void HttpsDownload::breakOff(const std::string& reason) {
    if (!brokenOffFor_.empty()) return;
    brokenOffFor_ = reason;
    reply_->abort();  // which finishes it
}

void HttpsDownload::finish() {
    timer_.stop();
    if (!failure() && reply_->bytesAvailable() > 0) readPart();
    reply_->disconnect(this);
    deleteLater();
    done_(failure());
}

std::optional<std::string> HttpsDownload::failure() const {
    if (!brokenOffFor_.empty()) return brokenOffFor_;
    if (reply_->error() == QNetworkReply::OperationCanceledError) return translated("it took too long");
    const bool isWhole = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 200;
    if (reply_->error() == QNetworkReply::NoError && isWhole) return {};
    // The words may hold some of the server's.
    return fileNameText(reply_->errorString().toStdString());
}

}  // namespace brindle
