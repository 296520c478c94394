#include "example/ExampleDays.h"

#include "model/PlatformText.h"
#include "model/Retention.h"
#include "model/SpaceBreakdown.h"

#include <algorithm>
#include <tuple>

namespace brindle {
namespace {

constexpr std::int64_t megabyte = 1'000'000;
constexpr std::int64_t gigabyte = 1'000 * megabyte;

constexpr Place allPlaces[] = {Place::home, Place::studio};
constexpr std::uint64_t saltOfDrives = 201;

/// The Trash is emptied at least so often.
constexpr int longestInTrash = 2 * 14;

// The sizes that a day begins with are those of all files that came in a lifetime; those in the Trash came
// earlier still.
constexpr int daysBeforeFirstKept = longestLife + longestInTrash;

/// A place and its drive, as far as they stay what they are.
struct Surroundings {
    const char* location;
    const char* volume;
    const char* name;
    const char* mountPath;
    bool isInternal;
    int daysUntracked;      // of those that are kept, before the first check
    UnixTime checkedAfter;  // seconds that its check is behind that of the first place
    std::int64_t oldBytes;  // of files that never change
    std::int64_t totalBytes;
    std::int64_t otherVolumes;
    std::int64_t leastHidden;  // what no check can see
    std::int64_t mostHidden;
    std::int64_t mostPurgeable;
    int mostSnapshots;
};

constexpr Surroundings surroundings[] = {
    {.location = "example.home",
     .volume = "example.volume.macintosh-hd",
     .name = platformText::exampleStartupDrive,
     .mountPath = "/",
     .isInternal = true,
     .daysUntracked = 10,
     .checkedAfter = 0,
     .oldBytes = 428 * gigabyte,
     .totalBytes = 994'662'584'320,
     .otherVolumes = 24'900 * megabyte,
     .leastHidden = 51 * gigabyte,
     .mostHidden = 54 * gigabyte,
     .mostPurgeable = 12 * gigabyte,
     .mostSnapshots = 6},
    {.location = "example.studio-ssd",
     .volume = "example.volume.studio-ssd",
     .name = "Studio SSD",
     .mountPath = "/Volumes/Studio SSD",
     .isInternal = false,
     .daysUntracked = 24,
     .checkedAfter = 40,
     .oldBytes = 2'310 * gigabyte,
     .totalBytes = 4'000'787'030'016,
     .otherVolumes = 0,
     .leastHidden = 1'200 * megabyte,
     .mostHidden = 1'900 * megabyte,
     .mostPurgeable = 0,
     .mostSnapshots = 0},
};

const Surroundings& around(Place place) {
    return surroundings[static_cast<std::size_t>(place)];
}

/// One file's size changing.
struct Event {
    std::size_t day;
    std::size_t check;
    const ExampleFile* file;
    std::int64_t before;
    std::int64_t after;

    [[nodiscard]] std::int64_t delta() const { return after - before; }
    [[nodiscard]] ChangeAction action() const {
        if (before == 0) return ChangeAction::added;
        if (after == 0) return ChangeAction::removed;
        return delta() > 0 ? ChangeAction::grew : ChangeAction::shrank;
    }
};

std::vector<Event> eventsOf(const std::vector<ExampleFile>& files) {
    std::vector<Event> events;
    for (const ExampleFile& file : files) {
        std::int64_t before = 0;
        for (const SizeStep& step : file.steps) {
            if (step.bytes != before) events.push_back({step.day, step.check, &file, before, step.bytes});
            before = step.bytes;
        }
    }
    // The files stand in the order in which they came.
    std::ranges::sort(events, {}, [](const Event& event) {
        return std::tuple(event.day, event.check, event.file->place, event.file);
    });
    return events;
}

/// Lives through the days from the first one on, checking as it goes.
class Life {
public:
    Life(const Calendar& calendar, UnixTime now, std::uint64_t seed) : rhythm_(seed), now_(now) {
        result_.today = calendar.day(now);
        firstKept_ = firstKeptDay(calendar, result_.today);
        days_ = checkedDays(rhythm_, calendar, calendar.addingDays(firstKept_, -daysBeforeFirstKept),
                            result_.today);
        for (const Place place : allPlaces) begin(place);
        files_ = exampleFiles(rhythm_, calendar, days_);
    }

    ExampleDays live() {
        const std::vector<Event> events = eventsOf(files_);
        auto next = events.begin();
        for (std::size_t day = 0; day < days_.size(); ++day) {
            // They are counted whether a check sees them or not, so that a number stays what it is.
            std::int64_t number = 0;
            if (rhythm_.falls(trashEmptied, days_[day].number)) trashBytes_ = 0;
            for (; next != events.end() && next->day == day; ++next) {
                constexpr std::int64_t idsOfADay = 1'000'000;
                happen(*next, days_[day].number * idsOfADay + number++);
            }
            for (const Place place : allPlaces) endDay(place, day);
        }
        std::ranges::sort(result_.estimates, {}, [](const FileChange& estimate) {
            return std::tuple(estimate.day, -estimate.byteDelta, estimate.id);
        });
        return std::move(result_);
    }

private:
    [[nodiscard]] PlaceHistory& history(Place place) {
        return result_.places[static_cast<std::size_t>(place)];
    }
    [[nodiscard]] std::int64_t& bytes(Place place) { return bytes_[static_cast<std::size_t>(place)]; }
    [[nodiscard]] std::size_t& startOf(Place place) { return starts_[static_cast<std::size_t>(place)]; }

    [[nodiscard]] UnixTime timeOf(Place place, std::size_t day, std::size_t check) const {
        return days_[day].checks[check] + around(place).checkedAfter;
    }

    void begin(Place place) {
        const DayNumber first = days_.front().number;
        const DayNumber start =
            rhythm_.nextInUse(place, first + daysBeforeFirstKept + around(place).daysUntracked);
        startOf(place) = static_cast<std::size_t>(start - first);
        history(place).start = days_[startOf(place)].day;
        history(place).baselineAt = timeOf(place, startOf(place), 0);
        bytes(place) = around(place).oldBytes;
    }

    void happen(const Event& event, std::int64_t id) {
        const Place place = event.file->place;
        const UnixTime at = timeOf(place, event.day, event.check);
        if (at > now_) return;
        bytes(place) += event.delta();
        if (event.after == 0 && event.file->isTrashed) trashBytes_ += event.before;

        FileChange change{.id = id,
                          .locationID = locationOf(place),
                          .folder = event.file->folder,
                          .name = event.file->name,
                          .action = event.action(),
                          .byteDelta = event.delta(),
                          .observedAt = at,
                          .day = days_[event.day].day,
                          .fileCount = event.file->fileCount};
        if (at > history(place).baselineAt)
            result_.changes.push_back(std::move(change));
        else if (event.before == 0)
            estimate(std::move(change), *event.file);
    }

    /// From the date of a file that was there before the first check, if it was still there then.
    void estimate(FileChange change, const ExampleFile& file) {
        const PlaceHistory& place = history(file.place);
        if (change.day < firstKept_ || change.day >= place.start) return;
        for (const SizeStep& step : file.steps)
            if (timeOf(file.place, step.day, step.check) <= place.baselineAt) change.byteDelta = step.bytes;
        if (change.byteDelta == 0) return;
        change.observedAt = place.baselineAt;
        change.source = ChangeSource::estimated;
        result_.estimates.push_back(std::move(change));
    }

    void endDay(Place place, std::size_t day) {
        const bool isToday = day + 1 == days_.size();
        if (day < startOf(place)) return;
        // Whoever looks at it has the computer on, and sees what is there.
        if (!isToday && !rhythm_.isInUse(place, days_[day].number)) return;
        PlaceHistory& known = history(place);
        known.lastCheck = std::min(now_, timeOf(place, day, 0));
        for (std::size_t check = 0; check < days_[day].checks.size(); ++check)
            if (const UnixTime at = timeOf(place, day, check); at <= now_) known.lastCheck = at;
        known.trackedBytes[days_[day].day] = bytes(place);
        if (place == Place::home && rhythm_.falls(unreadableFolder, days_[day].number))
            known.partialDays.insert(days_[day].day);
        sample(place, day);
    }

    void sample(Place place, std::size_t day) {
        const Surroundings& drive = around(place);
        RandomSource random =
            rhythm_.source(saltOfDrives + static_cast<std::uint64_t>(place), days_[day].number);
        const std::int64_t snapshots = random.between(0, drive.mostSnapshots);
        constexpr std::int64_t bytesOfSnapshot = 310 * megabyte;
        // Every file takes whole blocks.
        constexpr std::int64_t filesPerBlockLost = 400;
        constexpr std::int64_t block = 4096;
        const std::int64_t allocated = (bytes(place) + bytes(place) / filesPerBlockLost) / block * block +
                                       (place == Place::home ? trashBytes_ : 0);
        const std::int64_t used = drive.otherVolumes + random.between(drive.leastHidden, drive.mostHidden) +
                                  snapshots * bytesOfSnapshot + allocated;
        const std::int64_t free = drive.totalBytes - used;
        VolumeReading reading{
            .id = drive.volume,
            .name = drive.name,
            .mountPath = drive.mountPath,
            .totalBytes = drive.totalBytes,
            .freeBytes = free,
            .availableBytes = free + snapshots * bytesOfSnapshot + random.between(0, drive.mostPurgeable),
            .volumeUsedBytes = used - drive.otherVolumes,
            .snapshotCount = snapshots,
            .isInternal = drive.isInternal,
            .readAt = history(place).lastCheck};
        history(place).breakdown =
            spaceBreakdown(reading, {.allocatedBytes = allocated,
                                     .trashBytes = place == Place::home ? trashBytes_ : 0,
                                     .otherVolumesBytes = drive.otherVolumes});
        history(place).samples.push_back(std::move(reading));
    }

    Rhythm rhythm_;
    UnixTime now_;
    LocalDay firstKept_;
    std::vector<CheckedDay> days_;
    std::vector<ExampleFile> files_;
    std::array<std::size_t, 2> starts_{};  // by Place, indices into days_
    std::array<std::int64_t, 2> bytes_{};  // by Place, as of now
    std::int64_t trashBytes_ = 0;
    ExampleDays result_;
};

}  // namespace

LocationID locationOf(Place place) {
    return {around(place).location};
}

ExampleDays exampleDays(const Calendar& calendar, UnixTime now, std::uint64_t seed) {
    return Life(calendar, now, seed).live();
}

}  // namespace brindle
