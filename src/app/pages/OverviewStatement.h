#pragma once

#include "model/Calendar.h"
#include "model/HistorySnapshot.h"

#include <QString>
#include <QStringList>

namespace brindle {

/// What the Overview says of today and the week, ready to be shown.
struct OverviewStatement {
    enum class State {
        nothingYet,  // no location of the scope was ever checked
        recorded,
        estimated,
        noCheck,
    };

    State state = State::nothingYet;
    QString day;           // "Saturday, March 7, 2026"
    int netDirection = 0;  // of today's net change: -1, 0 or 1
    QString net;
    QString netExact;  // to the byte, like the others
    QString added;
    QString addedExact;
    QString freed;
    QString freedExact;
    QString files;      // "1,240 files changed"; empty when none did
    QString partial;    // why the day is partial; empty when it is not
    QString lastCheck;  // what the last check saw; empty before one
    QString weekAdded;  // of the recorded days; empty when there is none
    QString weekAddedExact;
    QString weekFreed;
    QString weekFreedExact;
    QString weekCoverage;  // "5 of 7 days recorded, 1 partial"
    QStringList troubles;  // locations that cannot be checked now

    bool operator==(const OverviewStatement&) const = default;
};

/// `weekFirst` to today is the week.
[[nodiscard]] OverviewStatement overviewStatement(const HistorySnapshot& snapshot, const LocationScope& scope,
                                                  const LocalDay& weekFirst, const Calendar& calendar);

}  // namespace brindle
