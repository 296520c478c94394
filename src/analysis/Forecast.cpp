#include "analysis/Forecast.h"

#include "model/NumberText.h"
#include "model/RawText.h"
#include "model/Translation.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace brindle {
namespace {

constexpr RawTextRow<NoForecast> reasons[] = {{NoForecast::tooFewReadings, "tooFewReadings"},
                                              {NoForecast::notSeenLately, "notSeenLately"},
                                              {NoForecast::full, "full"},
                                              {NoForecast::notFilling, "notFilling"},
                                              {NoForecast::tooFar, "tooFar"},
                                              {NoForecast::uneven, "uneven"}};

constexpr int fewestReadings = 10;
constexpr int shortestSpan = 21;      // days; three of the weekly rhythms that most use has
constexpr int oldestLastReading = 7;  // days
constexpr int horizon = 365;          // days
// Volumes that share a pool state a total that moves a little with their neighbours.
constexpr double sameSizeWithin = 0.01;
// Of two readings closer than this, weekdays, weekends and temporary files tell more than the pace does.
constexpr int closestPair = 7;  // days
constexpr double steadyWithin = 2;

struct DayReading {
    LocalDay day;
    int number = 0;  // days since the first of all readings
    std::int64_t totalBytes = 0;
    std::int64_t availableBytes = 0;
};

/// The last reading of each day up to today, by day.
std::vector<DayReading> lastOfEachDay(std::span<const VolumeReading> samples, const LocalDay& today,
                                      const Calendar& calendar) {
    std::map<LocalDay, const VolumeReading*> last;
    for (const VolumeReading& sample : samples) {
        const LocalDay day = calendar.day(sample.readAt);
        if (day > today) continue;
        const VolumeReading*& known = last[day];
        if (known == nullptr || known->readAt <= sample.readAt) known = &sample;
    }
    std::vector<DayReading> readings;
    readings.reserve(last.size());
    for (const auto& [day, sample] : last)
        readings.push_back({.day = day,
                            .number = calendar.daysBetween(last.begin()->first, day),
                            .totalBytes = sample->totalBytes,
                            .availableBytes = sample->availableBytes});
    return readings;
}

/// The latest readings, as many as are of one size of the drive.
std::span<const DayReading> ofTheSameSize(std::span<const DayReading> readings) {
    if (readings.empty()) return readings;
    const auto total = static_cast<double>(readings.back().totalBytes);
    const auto differs = [total](const DayReading& reading) {
        return std::abs(static_cast<double>(reading.totalBytes) - total) > sameSizeWithin * total;
    };
    const auto resized = std::find_if(readings.rbegin(), readings.rend(), differs);
    return readings.last(static_cast<std::size_t>(resized - readings.rbegin()));
}

/// Whether there are enough, and no gap leaves most of the time to a few of them.
bool areEnough(std::span<const DayReading> readings) {
    if (readings.size() < fewestReadings) return false;
    const int span = readings.back().number - readings.front().number;
    int longestGap = 0;
    for (std::size_t i = 1; i < readings.size(); ++i)
        longestGap = std::max(longestGap, readings[i].number - readings[i - 1].number);
    return span >= shortestSpan && 2 * longestGap <= span;
}

/// Bytes a day by which less is available, of all pairs of readings that are far enough apart, in order.
std::vector<double> paces(std::span<const DayReading> readings) {
    std::vector<double> found;
    for (std::size_t to = 0; to < readings.size(); ++to) {
        for (std::size_t from = 0; from < to; ++from) {
            const int days = readings[to].number - readings[from].number;
            if (days < closestPair) continue;
            const auto taken = static_cast<double>(readings[from].availableBytes) -
                               static_cast<double>(readings[to].availableBytes);
            found.push_back(taken / days);
        }
    }
    std::ranges::sort(found);
    return found;
}

/// A FullIn in a unit of `daysInUnit` days.
struct Duration {
    Duration(const FullIn& full, double daysInUnit)
        : usual(std::lround(full.days / daysInUnit)),
          earliest(std::lround(full.earliest / daysInUnit)),
          latest(std::lround(full.latest / daysInUnit)) {}

    /// `form`: the unit's text in the form that fits `usual`.
    [[nodiscard]] std::string text(const char* form) const {
        std::string text = filled(form, groupedNumber(usual));
        if (earliest != latest)
            text += filled(translated(" ({} to {})"), groupedNumber(earliest), groupedNumber(latest));
        return text;
    }

    std::int64_t usual;
    std::int64_t earliest;
    std::int64_t latest;
};

std::string durationText(const FullIn& full) {
    constexpr double daysInWeek = 7;
    constexpr double daysInMonth = 30.44;
    if (full.days < 2 * daysInWeek) {
        const Duration days(full, 1);
        return days.text(translatedCount("about {} day", "about {} days", days.usual));
    }
    if (full.days < 2 * daysInMonth) {
        const Duration weeks(full, daysInWeek);
        return weeks.text(translatedCount("about {} week", "about {} weeks", weeks.usual));
    }
    const Duration months(full, daysInMonth);
    return months.text(translatedCount("about {} month", "about {} months", months.usual));
}

}  // namespace

std::string_view rawText(NoForecast reason) {
    return rawTextOf<NoForecast>(reasons, reason);
}

Forecast forecast(std::span<const VolumeReading> samples, const LocalDay& today, const Calendar& calendar) {
    const std::vector<DayReading> all = lastOfEachDay(samples, today, calendar);
    const auto readings = ofTheSameSize(all);
    if (!areEnough(readings)) return NoForecast::tooFewReadings;
    const DayReading& latest = readings.back();
    const int daysSince = calendar.daysBetween(latest.day, today);
    if (daysSince > oldestLastReading) return NoForecast::notSeenLately;
    if (latest.availableBytes <= 0) return NoForecast::full;

    // The median of the slopes of all pairs of points (Theil 1950; Sen 1968, "Estimates of the regression
    // coefficient based on Kendall's tau"): a few readings that stand out do not move it. The outer tenths of
    // the same slopes say how steady the pace is. (Its usual confidence interval takes readings for
    // independent of each other; those of a drive are not, and it would promise too much.)
    const std::vector<double> sorted = paces(readings);
    const auto pace = [&sorted](std::size_t tenths) { return sorted[(sorted.size() - 1) * tenths / 10]; };
    const double slow = pace(1);
    const double usual = pace(5);
    const double fast = pace(9);
    const auto daysAt = [&](double bytesPerDay) {
        return std::max(0.0, static_cast<double>(latest.availableBytes) / bytesPerDay - daysSince);
    };
    if (usual <= 0) return NoForecast::notFilling;
    if (daysAt(fast) > horizon) return NoForecast::tooFar;
    if (slow <= 0 || fast > steadyWithin * slow) return NoForecast::uneven;
    if (daysAt(usual) > horizon) return NoForecast::tooFar;
    return FullIn{.days = static_cast<int>(std::lround(daysAt(usual))),
                  .earliest = static_cast<int>(std::lround(daysAt(fast))),
                  .latest = static_cast<int>(std::lround(daysAt(slow))),
                  .bytesPerDay = std::llround(usual),
                  .since = readings.front().day};
}

std::string sentence(const Forecast& forecast, const Calendar& calendar) {
    if (const auto* full = std::get_if<FullIn>(&forecast)) {
        if (full->days == 0)
            return translated("This drive will be full within a day if it goes on like this.");
        return filled(translated("At the pace since {0}, this drive will be full in {1}."),
                      calendar.mediumLabel(full->since), durationText(*full));
    }
    switch (std::get<NoForecast>(forecast)) {
        case NoForecast::tooFewReadings:
            return translated("There are too few readings of this drive for a forecast yet.");
        case NoForecast::notSeenLately:
            return translated("This drive was last seen too long ago for a forecast.");
        case NoForecast::full:
            return translated("This drive is full.");
        case NoForecast::notFilling:
            return translated("This drive isn't filling up.");
        case NoForecast::tooFar:
            return translated("At its present pace, this drive won't be full within a year.");
        case NoForecast::uneven:
            break;
    }
    return translated("This drive fills up too unevenly for a forecast.");
}

}  // namespace brindle
