#pragma once

#include "model/UnixTime.h"
#include "model/Volume.h"
#include "platform/Mounts.h"

#include <optional>
#include <string>

namespace brindle {

/// Reads how full the volume is that holds `path` (a folder): `volumeID` and `now` are taken over as they
/// are; `fallbackName` stands where the volume has no name. Nothing when the folder is not there, is on
/// another computer, or its file system states no size.
[[nodiscard]] std::optional<VolumeReading> readCapacity(const std::string& path, const std::string& volumeID,
                                                        const std::string& fallbackName, UnixTime now,
                                                        const MountTable& mounts = MountTable::current());

}  // namespace brindle
