#include "app/pages/AboutModel.h"

#include "model/PlatformText.h"
#include "model/Translation.h"

#include <fmt/format.h>

namespace brindle {

QString AboutModel::productLine() const {
    return translated("A private, local statement of where your storage went.");
}

QString AboutModel::version() const {
    return QString::fromStdString(
        fmt::format(fmt::runtime(translated("Version {} ({})")), BRINDLE_VERSION, BRINDLE_BUILD));
}

QString AboutModel::copyright() const {
    return translated("© 2026 The Brindle developers");
}

QStringList AboutModel::privacy() const {
    return {translated(platformText::staysHere),
            translated("Brindle records file sizes, dates, and paths. It never reads file contents.")};
}

QString AboutModel::updates() const {
    if (model_.updates()->unavailable()) return QString::fromStdString(aboutSentence());
    return translated(
        "An update installs only when you choose it. If a storage check is running, Brindle restarts after "
        "it finishes.");
}

}  // namespace brindle
