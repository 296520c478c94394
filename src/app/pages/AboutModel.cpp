#include "app/pages/AboutModel.h"

#include "app/pages/PageText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

namespace brindle {

QString AboutModel::product() const {
    return translated("A private, local statement of where your storage went.");
}

QString AboutModel::version() const {
    return pageText(translated("Version {} ({})"), BRINDLE_VERSION, BRINDLE_BUILD);
}

QString AboutModel::copyright() const {
    return translated("© 2026 The Brindle developers");
}

QString AboutModel::privacy() const {
    return pageText(
        "{} {}", translated(platformText::staysHere),
        translated("Brindle records file sizes, dates, and paths. It never reads file contents."));
}

QString AboutModel::updates() const {
    return QString::fromStdString(model_.updates()->unavailable() ? aboutSentence() : installSentence());
}

}  // namespace brindle
