#pragma once

#include "app/ProgramVersion.h"
#include "model/UnixTime.h"

#include <QByteArray>
#include <QUrl>
#include <optional>
#include <string>

namespace brindle {

/// A package that a feed offers.
struct UpdateOffer {
    ProgramVersion version;
    QUrl package;          // https
    std::string fileName;  // of the package: letters, digits and "._+~-", without a path
    qint64 length = 0;     // bytes, at least 1
    QByteArray signature;  // 64 bytes

    bool operator==(const UpdateOffer&) const = default;
};

/// What a feed of updates says.
struct Appcast {
    UnixTime date = 0;  // of the latest change to the feed
    std::optional<UpdateOffer> newest;
};

/// Reads a feed: RSS whose items hold the packages, one version each, in any order. Elements and attributes
/// are known by their local names, whatever the prefix. Items without a package for Linux are passed over.
/// Throws UpdateError when the feed is damaged: no XML, with a document type, without a date, or with a
/// package that lacks something or says something senseless.
[[nodiscard]] Appcast parseAppcast(const QByteArray& feed);

}  // namespace brindle
