#include "app/Appcast.h"

#include "app/UpdateError.h"
#include "model/Translation.h"

#include <QDateTime>
#include <QXmlStreamReader>
#include <algorithm>

namespace brindle {
namespace {

constexpr qsizetype signatureSize = 64;
constexpr QStringView thisSystem = u"linux";

[[noreturn]] void failAsDamaged() {
    throw UpdateError(translated("The list of updates is damaged."));
}

template <class Value>
Value require(std::optional<Value> value) {
    if (!value) failAsDamaged();
    return *std::move(value);
}

/// Empty when the attribute is missing.
QString attribute(const QXmlStreamAttributes& attributes, QStringView localName) {
    const auto found = std::find_if(attributes.begin(), attributes.end(), [localName](const auto& candidate) {
        return candidate.name() == localName;
    });
    return found == attributes.end() ? QString() : found->value().toString();
}

bool isPlainFileName(const std::string& name) {
    constexpr std::string_view allowed =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._+~-";
    return !name.empty() && name.size() <= 200 && name.front() != '.' && name.front() != '-' &&
           name.find_first_not_of(allowed) == std::string::npos;
}

UpdateOffer offerOf(const QXmlStreamAttributes& enclosure, const QString& versionOfItem) {
    const QString version = attribute(enclosure, u"version");
    UpdateOffer offer{
        .version = require(ProgramVersion::from((version.isEmpty() ? versionOfItem : version).toStdString())),
        .package = QUrl(attribute(enclosure, u"url"), QUrl::StrictMode),
        .fileName = {},
        .length = attribute(enclosure, u"length").toLongLong(),
        .signature = QByteArray::fromBase64(attribute(enclosure, u"edSignature").toLatin1(),
                                            QByteArray::AbortOnBase64DecodingErrors)};
    offer.fileName = offer.package.fileName().toStdString();
    const bool isSound = offer.package.isValid() && offer.package.scheme() == u"https" &&
                         isPlainFileName(offer.fileName) && offer.length > 0 &&
                         offer.signature.size() == signatureSize;
    if (!isSound) failAsDamaged();
    return offer;
}

class AppcastReader {
public:
    explicit AppcastReader(const QByteArray& feed) : xml_(feed) {}

    Appcast read() {
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
                case QXmlStreamReader::DTD:
                    failAsDamaged();
                case QXmlStreamReader::StartElement:
                    readElement();
                    break;
                default:
                    break;
            }
        }
        if (xml_.hasError() || !date_) failAsDamaged();
        appcast_.date = static_cast<UnixTime>(date_->toSecsSinceEpoch());
        return std::move(appcast_);
    }

private:
    void readElement() {
        if (xml_.name() == u"item") {
            readItem();
        } else if (xml_.name() == u"pubDate" || xml_.name() == u"lastBuildDate") {
            readDate();
        }
    }

    void readItem() {
        QString version;
        std::optional<QXmlStreamAttributes> enclosure;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == u"pubDate") {
                readDate();
            } else if (xml_.name() == u"version") {
                version = xml_.readElementText();
            } else {
                if (xml_.name() == u"enclosure" && isForThisSystem(xml_.attributes()))
                    enclosure = xml_.attributes();
                xml_.skipCurrentElement();
            }
        }
        if (xml_.hasError() || !enclosure) return;
        const UpdateOffer offer = offerOf(*enclosure, version);
        if (!appcast_.newest || offer.version > appcast_.newest->version) appcast_.newest = offer;
    }

    void readDate() {
        const auto date = QDateTime::fromString(xml_.readElementText().trimmed(), Qt::RFC2822Date);
        if (!date.isValid()) failAsDamaged();
        date_ = date_ ? std::max(*date_, date) : date;
    }

    static bool isForThisSystem(const QXmlStreamAttributes& enclosure) {
        const QString system = attribute(enclosure, u"os");
        return system.isEmpty() || system == thisSystem;
    }

    QXmlStreamReader xml_;
    Appcast appcast_;
    std::optional<QDateTime> date_;
};

}  // namespace

Appcast parseAppcast(const QByteArray& feed) {
    return AppcastReader(feed).read();
}

}  // namespace brindle
