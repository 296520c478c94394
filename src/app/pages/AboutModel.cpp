#include "app/pages/AboutModel.h"

#include "app/pages/PageText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

namespace brindle {
namespace {

QString updatesText(const UpdateController& updates) {
    if (updates.unavailable()) return QString::fromStdString(aboutSentence());
    return translated(
        "An update installs only when you choose it. If a storage check is running, Brindle restarts after "
        "it finishes.");
}

}  // namespace

QString AboutModel::text() const {
    const QString version = pageText(translated("Version {} ({})"), BRINDLE_VERSION, BRINDLE_BUILD);
    const QString privacy =
        pageText("{} {}", translated(platformText::staysHere),
                 translated("Brindle records file sizes, dates, and paths. It never reads file contents."));
    return QStringList{translated("A private, local statement of where your storage went."),
                       version + "\n" + translated("© 2026 The Brindle developers"),
                       translated("Privacy") + ("\n" + privacy),
                       translated("Updates") + ("\n" + updatesText(*model_.updates()))}
        .join("\n\n");
}

}  // namespace brindle
