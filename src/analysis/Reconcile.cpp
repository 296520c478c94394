#include "analysis/Reconcile.h"

#include "model/CheckedSum.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <map>

namespace brindle {
namespace {

std::int64_t used(const VolumeReading& reading) {
    return checkedDifference(reading.totalBytes, reading.freeBytes);
}

std::int64_t purgeable(const VolumeReading& reading) {
    return checkedDifference(reading.availableBytes, reading.freeBytes);
}

/// The net change of the drive's locations on the days after `after` and through `last`.
std::int64_t trackedNet(const HistorySnapshot& snapshot, const std::string& drive, const LocalDay& after,
                        const LocalDay& last) {
    std::int64_t net = 0;
    for (const TrackedLocation& location : snapshot.locations) {
        const auto days = snapshot.dayTotals.find(location.id);
        if (location.volumeID != drive || days == snapshot.dayTotals.end()) continue;
        for (const auto& [day, totals] : days->second)
            if (after < day && day <= last) net = checkedSum(net, totals.net());
    }
    return net;
}

bool isPartial(const HistorySnapshot& snapshot, const std::string& drive, const LocalDay& after,
               const LocalDay& last) {
    return std::ranges::any_of(snapshot.locations, [&](const TrackedLocation& location) {
        const auto days = snapshot.partialDays.find(location.id);
        return location.volumeID == drive && days != snapshot.partialDays.end() &&
               std::ranges::any_of(days->second,
                                   [&](const LocalDay& day) { return after < day && day <= last; });
    });
}

std::string usedSentence(const Reconciliation& found, const Calendar& calendar) {
    const char* text = translated("Used space on “{0}” didn't move between {2} and {3}.");
    if (found.usedMoved > 0) text = translated("Used space on “{0}” grew by {1} between {2} and {3}.");
    if (found.usedMoved < 0) text = translated("Used space on “{0}” shrank by {1} between {2} and {3}.");
    return filled(text, fileNameText(found.to.name), byteAmount(std::abs(found.usedMoved)),
                  calendar.timeLabel(found.from.readAt), calendar.timeLabel(found.to.readAt));
}

/// What may make up the rest without being measured.
std::vector<std::string> possibleCauses(const Reconciliation& found) {
    std::vector<std::string> causes;
    if (!found.isTrackedWhole) causes.emplace_back(translated("files outside the included locations"));
    if (found.isPartial) causes.emplace_back(translated("folders that couldn't be read"));
    if (!found.snapshotsMoved || *found.snapshotsMoved != 0) causes.emplace_back(translated("snapshots"));
    if (found.isShared && !found.beyondVolumeMoved)
        causes.emplace_back(translated("other volumes that share this drive"));
    causes.emplace_back(translated("the file system's own tables"));
    causes.emplace_back(translated("files that take more or less space than their size"));
    return causes;
}

/// "a, b or c"
std::string alternatives(const std::vector<std::string>& texts) {
    const auto last = texts.end() - 1;
    return filled(translated("{0} or {1}"), fmt::join(texts.begin(), last, translated(", ")), *last);
}

}  // namespace

std::int64_t Reconciliation::unexplained() const {
    return checkedDifference(usedMoved, trackedMoved);
}

std::optional<Reconciliation> reconcile(const HistorySnapshot& snapshot,
                                        std::span<const VolumeReading> samples, const LocalDay& first,
                                        const LocalDay& last, const Calendar& calendar) {
    std::map<LocalDay, VolumeReading> lastOfDay;
    for (const VolumeReading& sample : samples)
        if (const LocalDay day = calendar.day(sample.readAt); day <= last) lastOfDay[day] = sample;
    if (lastOfDay.size() < 2) return std::nullopt;
    auto from = lastOfDay.lower_bound(first);
    if (from != lastOfDay.begin()) --from;
    const auto to = std::prev(lastOfDay.end());
    if (to->first < first || from == to) return std::nullopt;

    const VolumeReading& before = from->second;
    const VolumeReading& after = to->second;
    const std::string& drive = after.id;
    Reconciliation found{.from = before,
                         .to = after,
                         .usedMoved = checkedDifference(used(after), used(before)),
                         .trackedMoved = trackedNet(snapshot, drive, from->first, to->first),
                         .isResized = before.totalBytes != after.totalBytes,
                         .isPartial = isPartial(snapshot, drive, from->first, to->first)};
    if (before.volumeUsedBytes && after.volumeUsedBytes) {
        const auto volumeMoved = checkedDifference(*after.volumeUsedBytes, *before.volumeUsedBytes);
        found.beyondVolumeMoved = checkedDifference(found.usedMoved, volumeMoved);
    }
    if (purgeable(before) != 0 || purgeable(after) != 0)
        found.purgeableMoved = checkedDifference(purgeable(after), purgeable(before));
    if (before.snapshotCount && after.snapshotCount)
        found.snapshotsMoved = *after.snapshotCount - *before.snapshotCount;
    const auto breakdown = snapshot.breakdowns.find(drive);
    found.isShared = breakdown != snapshot.breakdowns.end() && breakdown->second.otherVolumes > 0;
    found.isTrackedWhole = std::ranges::any_of(snapshot.locations, [&](const TrackedLocation& location) {
        return location.volumeID == drive && location.kind == LocationKind::volume &&
               isTracked(location, last);
    });
    return found;
}

std::vector<std::string> reconciliationSentences(const Reconciliation& found, const Calendar& calendar) {
    std::vector<std::string> sentences{usedSentence(found, calendar)};
    if (found.isResized) {
        sentences.push_back(filled(translated("Its capacity went from {0} to {1}."),
                                   byteAmount(found.from.totalBytes), byteAmount(found.to.totalBytes)));
    }
    sentences.push_back(
        filled(translated("Tracked changes account for {}."), signedByteAmount(found.trackedMoved)));
    if (found.unexplained() == 0) return sentences;

    sentences.push_back(filled(translated("The other {0} can be {1}."), signedByteAmount(found.unexplained()),
                               alternatives(possibleCauses(found))));
    if (found.beyondVolumeMoved && *found.beyondVolumeMoved != 0)
        sentences.push_back(filled(found.isShared
                                       ? translated("Other volumes that share this drive moved by {}.")
                                       : translated("Blocks reserved for the system moved by {}."),
                                   signedByteAmount(*found.beyondVolumeMoved)));
    if (found.purgeableMoved)
        sentences.push_back(
            filled(translated("Purgeable space moved by {}."), signedByteAmount(*found.purgeableMoved)));
    if (found.snapshotsMoved && *found.snapshotsMoved != 0) {
        const std::int64_t moved = std::abs(*found.snapshotsMoved);
        const char* text =
            *found.snapshotsMoved > 0
                ? translatedCount("There is {} more snapshot.", "There are {} more snapshots.", moved)
                : translatedCount("There is {} snapshot fewer.", "There are {} snapshots fewer.", moved);
        sentences.push_back(filled(text, groupedNumber(moved)) + " " +
                            translated(platformText::snapshotSizes));
    }
    return sentences;
}

}  // namespace brindle
