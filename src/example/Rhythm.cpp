#include "example/Rhythm.h"

namespace brindle {
namespace {

constexpr int week = 7;

int floorDivided(int a, int b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

int periodOf(const Occasion& occasion, DayNumber day) {
    return floorDivided(day, week * occasion.weeks);
}

}  // namespace

RandomSource Rhythm::source(std::uint64_t salt, DayNumber day) const {
    // Drawn, not added: states that lie near each other would give the same numbers a few draws apart.
    RandomSource random{seed_ ^ salt << 32};
    random.state = random.next() ^ static_cast<std::uint64_t>(day);
    random.state = random.next();
    return random;
}

bool Rhythm::isWeekend(DayNumber day) {
    return day - week * floorDivided(day, week) >= 5;
}

DayNumber Rhythm::dayOf(const Occasion& occasion, int period) const {
    RandomSource random = source(occasion.salt, period);
    const auto inWeek = static_cast<int>(random.between(occasion.first, occasion.last));
    return (period * occasion.weeks + static_cast<int>(random.between(0, occasion.weeks - 1))) * week +
           inWeek;
}

bool Rhythm::falls(const Occasion& occasion, DayNumber day) const {
    return dayOf(occasion, periodOf(occasion, day)) == day;
}

DayNumber Rhythm::next(const Occasion& occasion, DayNumber from) const {
    const int period = periodOf(occasion, from);
    const DayNumber day = dayOf(occasion, period);
    return day >= from ? day : dayOf(occasion, period + 1);
}

bool Rhythm::isInUse(Place place, DayNumber day) const {
    return !falls(computerOff, day) && (place == Place::home || !falls(studioDriveAway, day));
}

DayNumber Rhythm::nextInUse(Place place, DayNumber from) const {
    while (!isInUse(place, from)) ++from;
    return from;
}

}  // namespace brindle
