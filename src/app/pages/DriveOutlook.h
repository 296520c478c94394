#pragma once

#include "model/Calendar.h"
#include "model/HistorySource.h"

#include <QString>
#include <QStringList>
#include <map>
#include <string>

namespace brindle {

/// What the capacity samples of a drive tell.
struct DriveOutlook {
    QString forecast;            // when it will be full, or why that cannot be said
    QStringList reconciliation;  // how its used space moved in the last seven days, and why; may be empty

    bool operator==(const DriveOutlook&) const = default;
};

/// By drive, for the drives of the snapshot. Reads for as long as that takes. Any thread. Throws the source's
/// error.
[[nodiscard]] std::map<std::string, DriveOutlook> driveOutlooks(HistorySource& source,
                                                                const HistorySnapshot& snapshot,
                                                                const Calendar& calendar);

}  // namespace brindle
