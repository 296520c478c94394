#include "app/pages/DriveOutlook.h"

#include "analysis/Forecast.h"
#include "analysis/RangeFigures.h"
#include "analysis/Reconcile.h"

namespace brindle {
namespace {

constexpr int daysReconciled = 7;

}  // namespace

std::map<std::string, DriveOutlook> driveOutlooks(HistorySource& source, const HistorySnapshot& snapshot,
                                                  const Calendar& calendar) {
    std::map<std::string, DriveOutlook> outlooks;
    const LocalDay& today = snapshot.today;
    const LocalDay weekFirst = calendar.addingDays(today, 1 - daysReconciled);
    for (const VolumeReading& drive : snapshot.volumes) {
        const auto samples = source.capacitySamples(drive.id, firstKeptDay(snapshot, calendar), today).get();
        DriveOutlook& outlook = outlooks[drive.id];
        outlook.forecast = QString::fromStdString(sentence(forecast(samples, today, calendar), calendar));
        if (const auto moved = reconcile(snapshot, samples, weekFirst, today, calendar))
            for (const std::string& text : reconciliationSentences(*moved, calendar))
                outlook.reconciliation += QString::fromStdString(text);
    }
    return outlooks;
}

}  // namespace brindle
