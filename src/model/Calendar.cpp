#include "model/Calendar.h"

#include "model/UserLocale.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <mutex>
#include <stdexcept>
#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

namespace brindle {
namespace {

constexpr int noon = 12;
constexpr int daysInWeek = 7;
constexpr double millisecondsPerSecond = 1000;
constexpr UnixTime distantFuture = 253402214400.0;  // 31 December of the year 9999

std::unique_ptr<icu::TimeZone> zoneNamed(const std::string& name) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    if (*zone == icu::TimeZone::getUnknown())
        throw std::invalid_argument("There is no time zone " + name + ".");
    return zone;
}

icu::Locale withGregorianDays(const std::string& locale) {
    icu::Locale named(locale.c_str());
    UErrorCode status = U_ZERO_ERROR;
    named.setKeywordValue("calendar", "gregorian", status);
    return named;
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace

struct Calendar::Parts {
    Parts(const icu::Locale& numbering, const icu::Locale& labelling, const icu::TimeZone& zone)
        : labels(labelling) {
        UErrorCode status = U_ZERO_ERROR;
        days.reset(icu::Calendar::createInstance(zone, numbering, status));
        if (U_FAILURE(status)) throw std::runtime_error("The calendar data of this system can't be read.");
        // Where the clocks go back from one o'clock to midnight, the day begins at the first of its
        // midnights.
        days->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    }

    /// A calendar of one's own to set and ask: ICU's are changed by every question.
    [[nodiscard]] std::unique_ptr<icu::Calendar> copy() const {
        return std::unique_ptr<icu::Calendar>(days->clone());
    }

    /// A calendar set to the given hour of a day; nothing when the calendar has no such day.
    [[nodiscard]] std::unique_ptr<icu::Calendar> at(const LocalDay& day, int hour) const {
        auto calendar = copy();
        calendar->clear();
        calendar->set(day.year, day.month - 1, day.day, hour, 0, 0);
        UErrorCode status = U_ZERO_ERROR;
        calendar->getTime(status);
        return U_SUCCESS(status) ? std::move(calendar) : nullptr;
    }

    [[nodiscard]] static LocalDay dayOf(const icu::Calendar& calendar) {
        const auto part = [&calendar](UCalendarDateFields field, int fallback) {
            UErrorCode status = U_ZERO_ERROR;
            const int value = calendar.get(field, status);
            return U_SUCCESS(status) ? value : fallback;
        };
        return {part(UCAL_YEAR, 1970), part(UCAL_MONTH, 0) + 1, part(UCAL_DATE, 1)};
    }

    [[nodiscard]] std::string label(UnixTime at, const char* skeleton) const {
        // Making a format takes a hundred times longer than using it.
        const std::lock_guard lock(mutex);
        auto& format = formats[skeleton];
        if (!format) {
            UErrorCode status = U_ZERO_ERROR;
            format.reset(icu::DateFormat::createInstanceForSkeleton(skeleton, labels, status));
            if (U_FAILURE(status)) {
                format.reset();
                return {};
            }
            format->setTimeZone(days->getTimeZone());
        }
        icu::UnicodeString text;
        return utf8(format->format(at * millisecondsPerSecond, text));
    }

    std::unique_ptr<icu::Calendar> days;
    icu::Locale labels;
    mutable std::mutex mutex;
    mutable std::map<std::string, std::unique_ptr<icu::DateFormat>> formats;  // by skeleton
};

Calendar::Calendar(std::shared_ptr<const Parts> parts) : parts_(std::move(parts)) {}

Calendar::Calendar(const std::string& locale, const std::string& zone)
    : parts_(std::make_shared<const Parts>(icu::Locale(locale.c_str()), icu::Locale(locale.c_str()),
                                           *zoneNamed(zone))) {}

Calendar Calendar::current() {
    const std::string locale = userLocale();
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    return Calendar(
        std::make_shared<const Parts>(withGregorianDays(locale), icu::Locale(locale.c_str()), *zone));
}

LocalDay Calendar::day(UnixTime at) const {
    const auto calendar = parts_->copy();
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(at * millisecondsPerSecond, status);
    return Parts::dayOf(*calendar);
}

UnixTime Calendar::time(const LocalDay& day, int hour) const {
    const auto calendar = parts_->at(day, hour);
    if (!calendar) return distantPast;
    UErrorCode status = U_ZERO_ERROR;
    return calendar->getTime(status) / millisecondsPerSecond;
}

LocalDay Calendar::addingDays(const LocalDay& day, int count) const {
    const auto calendar = parts_->at(day, noon);
    if (!calendar) return day;
    UErrorCode status = U_ZERO_ERROR;
    calendar->add(UCAL_DATE, count, status);
    return U_SUCCESS(status) ? Parts::dayOf(*calendar) : day;
}

LocalDay Calendar::addingMonths(const LocalDay& day, int count) const {
    const auto calendar = parts_->at({day.year, day.month, 1}, noon);
    if (!calendar) return day;
    UErrorCode status = U_ZERO_ERROR;
    calendar->add(UCAL_MONTH, count, status);
    if (U_FAILURE(status)) return day;
    LocalDay first = Parts::dayOf(*calendar);
    first.day = 1;
    return first;
}

int Calendar::daysBetween(const LocalDay& first, const LocalDay& last) const {
    const auto from = parts_->at(first, noon);
    const auto to = parts_->at(last, noon);
    if (!from || !to) return 0;
    UErrorCode status = U_ZERO_ERROR;
    const int days = from->fieldDifference(to->getTime(status), UCAL_DATE, status);
    return U_SUCCESS(status) ? days : 0;
}

std::vector<LocalDay> Calendar::days(const LocalDay& first, const LocalDay& last) const {
    std::vector<LocalDay> days;
    for (LocalDay day = first; day <= last;) {
        days.push_back(day);
        const LocalDay next = addingDays(day, 1);
        if (next <= day) break;  // the end of what the calendar knows
        day = next;
    }
    return days;
}

TimeOfDay Calendar::timeOfDay(UnixTime at) const {
    const auto calendar = parts_->copy();
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(at * millisecondsPerSecond, status);
    const TimeOfDay time{calendar->get(UCAL_HOUR_OF_DAY, status), calendar->get(UCAL_MINUTE, status)};
    return U_SUCCESS(status) ? time : TimeOfDay{};
}

int Calendar::placeInWeek(const LocalDay& day) const {
    const auto calendar = parts_->at(day, noon);
    if (!calendar) return 0;
    UErrorCode status = U_ZERO_ERROR;
    const int weekday = calendar->get(UCAL_DAY_OF_WEEK, status);
    const int first = calendar->getFirstDayOfWeek(status);
    return U_SUCCESS(status) ? (weekday - first + daysInWeek) % daysInWeek : 0;
}

std::array<std::string, 7> Calendar::weekdayNames() const {
    std::array<std::string, 7> names;
    const LocalDay someDay = day(0);
    for (const LocalDay& named : days(someDay, addingDays(someDay, daysInWeek - 1)))
        names.at(static_cast<std::size_t>(placeInWeek(named))) = parts_->label(time(named, noon), "ccc");
    return names;
}

std::string Calendar::longLabel(const LocalDay& day) const {
    return parts_->label(time(day), "yMMMMEEEEd");
}
std::string Calendar::mediumLabel(const LocalDay& day) const {
    return parts_->label(time(day), "MMMMEEEEd");
}
std::string Calendar::shortLabel(const LocalDay& day) const {
    return parts_->label(time(day), "MMMEEEd");
}
std::string Calendar::dateLabel(const LocalDay& day) const {
    return parts_->label(time(day), "MMMd");
}
std::string Calendar::monthLabel(const LocalDay& day) const {
    return parts_->label(time(day), "yMMMM");
}
std::string Calendar::clockLabel(UnixTime at) const {
    return parts_->label(at, "jm");
}
std::string Calendar::timeLabel(UnixTime at) const {
    return parts_->label(at, "yMMMdjm");
}

std::string Calendar::isoTime(UnixTime at) const {
    // What lies further away, or is no number, can only come from a file that was tampered with.
    const double seconds = std::isnan(at) ? 0 : std::clamp(std::floor(at), distantPast, distantFuture);
    std::int32_t standard = 0;
    std::int32_t daylight = 0;
    UErrorCode status = U_ZERO_ERROR;
    parts_->days->getTimeZone().getOffset(seconds * millisecondsPerSecond, 0, standard, daylight, status);
    const std::chrono::seconds offset((standard + daylight) / static_cast<int>(millisecondsPerSecond));

    const std::chrono::sys_seconds local(std::chrono::seconds(static_cast<std::int64_t>(seconds)) + offset);
    const auto midnight = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(local - midnight);
    const auto minutes = std::chrono::abs(std::chrono::duration_cast<std::chrono::minutes>(offset)).count();
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}{}{:02}{:02}", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                       time.hours().count(), time.minutes().count(), time.seconds().count(),
                       offset.count() < 0 ? '-' : '+', minutes / 60, minutes % 60);
}

}  // namespace brindle
