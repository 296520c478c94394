#pragma once

#include "model/LocalDay.h"
#include "model/UnixTime.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// What a clock on the wall shows.
struct TimeOfDay {
    int hour = 0;    // 0 to 23
    int minute = 0;  // 0 to 59

    bool operator==(const TimeOfDay&) const = default;
};

/// Turns points in time into local days and back, by ICU's calendar in a locale and a time zone.
/// A plain value, cheap to copy; every operation may be called from any thread.
///
/// Arithmetic is done at 12:00, so that a change to or from daylight-saving time never moves a day.
class Calendar {
public:
    /// `locale` as ICU names it ("en_US", "th_TH@calendar=buddhist"), `zone` as the time-zone database
    /// names it. Throws std::invalid_argument for a zone that is not known.
    Calendar(const std::string& locale, const std::string& zone);

    /// The user's locale and time zone, with days numbered by the Gregorian calendar whatever the locale:
    /// stored days are compared as text, and a history must go on reading the same after the user changes
    /// language. Labels still follow the locale.
    [[nodiscard]] static Calendar current();

    [[nodiscard]] LocalDay day(UnixTime at) const;

    /// The instant at which `hour` of the day begins; where the clocks skip it, the instant after the gap.
    /// The distant past when the calendar has no such day.
    [[nodiscard]] UnixTime time(const LocalDay& day, int hour = 0) const;

    /// `count` days later (earlier when negative); the day itself when the calendar cannot tell.
    [[nodiscard]] LocalDay addingDays(const LocalDay& day, int count) const;

    /// The first day of the month `count` months later (earlier when negative); the day itself when the
    /// calendar cannot tell.
    [[nodiscard]] LocalDay addingMonths(const LocalDay& day, int count) const;

    /// Whole days from `first` to `last`, negative when `last` is earlier; 0 when the calendar cannot tell.
    [[nodiscard]] int daysBetween(const LocalDay& first, const LocalDay& last) const;

    /// Every day from `first` through `last`; empty when `last` is earlier.
    [[nodiscard]] std::vector<LocalDay> days(const LocalDay& first, const LocalDay& last) const;

    [[nodiscard]] TimeOfDay timeOfDay(UnixTime at) const;

    /// Where the day stands in its week, which begins as the locale says: 0 to 6.
    [[nodiscard]] int placeInWeek(const LocalDay& day) const;

    /// The short names of the days of a week, in its order: "Sun", "Mon" and so on.
    [[nodiscard]] std::array<std::string, 7> weekdayNames() const;

    [[nodiscard]] std::string longLabel(const LocalDay& day) const;    // "Saturday, March 7, 2026"
    [[nodiscard]] std::string mediumLabel(const LocalDay& day) const;  // "Saturday, March 7"
    [[nodiscard]] std::string shortLabel(const LocalDay& day) const;   // "Sat, Mar 7"
    [[nodiscard]] std::string dateLabel(const LocalDay& day) const;    // "Mar 7"
    [[nodiscard]] std::string monthLabel(const LocalDay& day) const;   // "March 2026"
    [[nodiscard]] std::string clockLabel(UnixTime at) const;           // "2:05 PM"
    [[nodiscard]] std::string timeLabel(UnixTime at) const;            // "Mar 7, 2026, 2:05 PM"

    /// The instant in the form of ISO 8601, in whole seconds, with the zone's offset at that instant,
    /// whatever the locale: "2026-03-07T14:05:09+0100".
    [[nodiscard]] std::string isoTime(UnixTime at) const;

private:
    struct Parts;
    explicit Calendar(std::shared_ptr<const Parts> parts);

    std::shared_ptr<const Parts> parts_;
};

/// The distant past: earlier than anything that a file system or a history can hold.
inline constexpr UnixTime distantPast = -62135769600.0;  // 1 January of the year 1

}  // namespace brindle
