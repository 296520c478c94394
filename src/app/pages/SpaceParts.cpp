#include "app/pages/SpaceParts.h"

#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

#include <QVariantMap>

namespace brindle {

QVariantList spaceParts(const UsedSpaceBreakdown& breakdown, const VolumeReading& drive) {
    QVariantList parts;
    const auto add = [&](const char* part, const char* title, const char* explanation, std::int64_t bytes) {
        parts.append(QVariantMap{{"part", part},
                                 {"title", QString(title)},
                                 {"explanation", QString(explanation)},
                                 {"amount", QString::fromStdString(byteAmount(bytes))},
                                 {"exact", QString::fromStdString(exactByteAmount(bytes))},
                                 {"share", shareOf(bytes, drive.totalBytes)}});
    };
    add("files", translated("Files Brindle checks"),
        translated("Their space on disk, which can differ a little from the file sizes in your history."),
        breakdown.files);
    if (breakdown.trash > 0)
        add("trash", translated("Trash"),
            translated("Deleted files, which take up space until the Trash is emptied."), breakdown.trash);
    if (breakdown.notVisible > 0)
        add("notVisible", translated("Not visible to Brindle"), translated(platformText::notVisible),
            breakdown.notVisible);
    if (breakdown.otherVolumes > 0)
        add("otherVolumes", translated("Other volumes"),
            drive.mountPath == "/" ? translated(platformText::otherVolumesOfStartup)
                                   : translated("Other volumes that share this drive."),
            breakdown.otherVolumes);
    return parts;
}

}  // namespace brindle
