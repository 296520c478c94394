#pragma once

#include "example/RandomSource.h"

#include <cstdint>

// What kind of day a day is in the life of the example. All of it follows from one number and the day alone,
// so that a day stays what it was when others come.

namespace brindle {

/// A day, counted from Monday, 3 January 2000.
using DayNumber = int;

/// Something that happens once in so many weeks, on one of the weekdays from `first` to `last` (0: Monday).
struct Occasion {
    std::uint64_t salt;  // tells occasions apart
    int weeks;
    int first;
    int last;
};

inline constexpr Occasion computerOff{.salt = 1, .weeks = 4, .first = 6, .last = 6};
inline constexpr Occasion studioDriveAway{.salt = 2, .weeks = 2, .first = 5, .last = 6};
inline constexpr Occasion bigShoot{.salt = 3, .weeks = 4, .first = 1, .last = 3};
inline constexpr Occasion pickupShoot{.salt = 4, .weeks = 1, .first = 0, .last = 4};
inline constexpr Occasion cleanup{.salt = 5, .weeks = 4, .first = 5, .last = 5};
inline constexpr Occasion archiving{.salt = 6, .weeks = 4, .first = 4, .last = 4};
inline constexpr Occasion trashEmptied{.salt = 7, .weeks = 2, .first = 0, .last = 4};
inline constexpr Occasion unreadableFolder{.salt = 8, .weeks = 4, .first = 0, .last = 4};

enum class Place { home, studio };

class Rhythm {
public:
    explicit Rhythm(std::uint64_t seed) : seed_(seed) {}

    /// Numbers for one purpose on one day.
    [[nodiscard]] RandomSource source(std::uint64_t salt, DayNumber day) const;

    [[nodiscard]] static bool isWeekend(DayNumber day);
    [[nodiscard]] bool falls(const Occasion& occasion, DayNumber day) const;
    /// The first day from this one on that the occasion falls on.
    [[nodiscard]] DayNumber next(const Occasion& occasion, DayNumber from) const;

    /// Whether files come and go in the place on the day, and checks see them.
    [[nodiscard]] bool isInUse(Place place, DayNumber day) const;
    /// The first day from this one on that the place is in use.
    [[nodiscard]] DayNumber nextInUse(Place place, DayNumber from) const;

private:
    /// The day of the occasion in its period of weeks.
    [[nodiscard]] DayNumber dayOf(const Occasion& occasion, int period) const;

    std::uint64_t seed_;
};

}  // namespace brindle
