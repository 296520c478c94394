#pragma once

#include "model/Volume.h"

#include <QString>
#include <QVariantList>

namespace brindle {

/// The parts of a drive's used space for its bar and legend, in the order of the bar; parts without any
/// space are left out, but for the files that are checked. Each is a map of
///   part         "files", "trash", "notVisible" or "otherVolumes"
///   title, explanation
///   amount, exact  exact is to the byte
///   share        of the whole drive, 0 to 1
[[nodiscard]] QVariantList spaceParts(const UsedSpaceBreakdown& breakdown, const VolumeReading& drive);

}  // namespace brindle
