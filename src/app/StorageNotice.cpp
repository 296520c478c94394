#include "app/StorageNotice.h"

#include "analysis/DaySentence.h"
#include "analysis/Forecast.h"
#include "analysis/Moves.h"
#include "analysis/UnusualGrowth.h"
#include "model/FileNameText.h"
#include "model/FolderSummary.h"
#include "model/NumberText.h"
#include "model/Packages.h"
#include "model/Retention.h"
#include "model/Translation.h"

#include <algorithm>
#include <limits>
#include <variant>
#include <vector>

namespace brindle {
namespace {

constexpr int daysUntilFull = 14;
constexpr int daysBetweenDriveNotices = 7;
constexpr int daysUnreachable = 7;
constexpr int longestGap = 3;
constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

std::optional<StorageNotice> driveSoonFull(HistorySource& source, const HistorySnapshot& snapshot,
                                           const ToldNotices& told, const Calendar& calendar) {
    const LocalDay& today = snapshot.today;
    std::optional<StorageNotice> notice;
    int fewestDays = daysUntilFull + 1;
    for (const VolumeReading& drive : snapshot.volumes) {
        const std::string subject = "drive " + drive.id;
        const auto last = told.lastDay(subject, today);
        if (last && calendar.daysBetween(*last, today) < daysBetweenDriveNotices) continue;
        const auto samples = source.capacitySamples(drive.id, firstKeptDay(calendar, today), today).get();
        const Forecast outlook = forecast(samples, today, calendar);
        const auto* full = std::get_if<FullIn>(&outlook);
        if (full == nullptr || full->days >= fewestDays) continue;
        fewestDays = full->days;
        notice = {.subject = subject,
                  .title = filled(translated("“{}” will be full soon"), fileNameText(drive.name)),
                  .text = sentence(outlook, calendar),
                  .day = today,
                  .folder = {}};
    }
    return notice;
}

std::optional<StorageNotice> unreachableLocation(const HistorySnapshot& snapshot, const ToldNotices& told,
                                                 const Calendar& calendar) {
    for (const TrackedLocation& location : snapshot.currentlyTracked()) {
        const bool isAway = location.status == LocationStatus::disconnected;
        if ((!isAway && location.status != LocationStatus::needsAccess) || !location.lastCheck) continue;
        const LocalDay checked = calendar.day(*location.lastCheck);
        const std::int64_t days = calendar.daysBetween(checked, snapshot.today);
        const std::string subject = "location " + location.id.rawValue;
        const auto last = told.lastDay(subject, snapshot.today);
        if (days < daysUnreachable || (last && *last > checked)) continue;
        const std::string name = fileNameText(location.name);
        return StorageNotice{
            .subject = subject,
            .title =
                filled(isAway ? translated("“{}” can't be found") : translated("“{}” can't be read"), name),
            .text = filled(
                translatedCount("It was last checked on {0}, {1} day ago. Its history is kept.",
                                "It was last checked on {0}, {1} days ago. Its history is kept.", days),
                calendar.mediumLabel(checked), groupedNumber(days)),
            .day = snapshot.today,
            .folder = {}};
    }
    return {};
}

/// The days before today on which a check of the location can have seen growth, in no particular order.
std::vector<LocalDay> daysBefore(const HistorySnapshot& snapshot, const LocationID& location) {
    const auto known = std::ranges::find(snapshot.locations, location, &TrackedLocation::id);
    const auto checked = snapshot.checkedDays.find(location);
    if (known == snapshot.locations.end() || checked == snapshot.checkedDays.end()) return {};
    std::vector<LocalDay> days;
    std::ranges::copy_if(checked->second, std::back_inserter(days), [&](const LocalDay& day) {
        return day < snapshot.today && day != known->trackingStart;
    });
    return days;
}

/// Of what did not move.
std::vector<FolderSummary> withoutMoves(const std::vector<FileChange>& changes) {
    const Moves moves(changes);
    FolderSums sums(contributorDepth);
    for (const FileChange& change : changes)
        if (moves.counterpart(change) == nullptr) sums.add(change);
    return sums.summaries();
}

}  // namespace

std::optional<StorageNotice> NoticeFinder::find(HistorySource& source, const HistorySnapshot& snapshot,
                                                const ToldNotices& told, const Calendar& calendar) {
    if (told.hasAnyOn(snapshot.today)) return {};
    if (auto notice = driveSoonFull(source, snapshot, told, calendar)) return notice;
    if (auto notice = unusual(source, snapshot, calendar)) return notice;
    return unreachableLocation(snapshot, told, calendar);
}

std::optional<StorageNotice> NoticeFinder::unusual(HistorySource& source, const HistorySnapshot& snapshot,
                                                   const Calendar& calendar) {
    const auto isUnusual = [&](const FolderSummary& folder) {
        return judged(folder.ref, folder.totals.net(), source, snapshot, calendar).has_value();
    };
    // Few folders come so far that all changes of the day are read.
    const auto summed = source.periodContributors(snapshot.today, snapshot.today, {}, all).get();
    if (std::ranges::none_of(summed, isUnusual)) return {};
    auto folders = withoutMoves(source.dayChanges(snapshot.today, {}).get());
    std::erase_if(folders, [&](const FolderSummary& folder) { return !isUnusual(folder); });
    if (folders.empty()) return {};

    const auto& [ref, totals] = *std::ranges::max_element(
        folders, {}, [](const FolderSummary& folder) { return std::pair(folder.totals.net(), folder.ref); });
    const std::int64_t most = *judged(ref, totals.net(), source, snapshot, calendar);
    return StorageNotice{
        .subject = "growth",
        .title = filled(translated("{0} grew by {1} today"), placeText(ref, snapshot.locations),
                        byteAmount(totals.net())),
        .text = most > 0 ? filled(translated("On most days it grows by less than {}."), byteAmount(most))
                         : std::string(translated("On most days it doesn't grow at all.")),
        .day = snapshot.today,
        .folder = ref};
}

std::optional<std::int64_t> NoticeFinder::judged(const FolderRef& folder, std::int64_t growth,
                                                 HistorySource& source, const HistorySnapshot& snapshot,
                                                 const Calendar& calendar) {
    std::vector<LocalDay> days = daysBefore(snapshot, folder.locationID);
    // Growth that no past could make unusual is not compared with any.
    if (!unusualGrowth(growth, std::vector<std::int64_t>(days.size()))) return {};
    if (calendar.daysBetween(*std::ranges::max_element(days), snapshot.today) > longestGap) return {};
    std::vector<std::int64_t> past;
    for (const LocalDay& day : days) {
        const Growth& known = growthOn(day, source);
        const auto found = known.find(folder);
        past.push_back(found == known.end() ? 0 : found->second);
    }
    return unusualGrowth(growth, std::move(past));
}

const NoticeFinder::Growth& NoticeFinder::growthOn(const LocalDay& day, HistorySource& source) {
    const auto [known, isNew] = past_.try_emplace(day);
    if (isNew)
        for (const auto& [ref, totals] : source.periodContributors(day, day, {}, all).get())
            known->second[ref] = totals.net();
    return known->second;
}

}  // namespace brindle
