#pragma once

#include "example/Rhythm.h"
#include "model/Calendar.h"
#include "model/FolderPath.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// A day with the times at which checks run on it, at least one.
struct CheckedDay {
    LocalDay day;
    DayNumber number = 0;
    std::vector<UnixTime> checks;
};

/// What a file's size became, as a check sees it first.
struct SizeStep {
    std::size_t day = 0;  // an index into the generated days
    std::size_t check = 0;
    std::int64_t bytes = 0;  // 0: gone
};

/// A file, or a group of small ones, from its coming to its going.
struct ExampleFile {
    Place place = Place::home;
    FolderPath folder;
    std::string name;  // empty for a group
    std::int64_t fileCount = 1;
    bool isTrashed = false;
    std::vector<SizeStep> steps;  // by time, each on a day of its own
};

/// A file goes at the latest so many days after it came.
inline constexpr int longestLife = 90;

/// The days from `first` through `last`.
[[nodiscard]] std::vector<CheckedDay> checkedDays(const Rhythm& rhythm, const Calendar& calendar,
                                                  const LocalDay& first, const LocalDay& last);

/// All files that came on one of the days, what becomes of them later than the last day left out. Those that
/// came on a day are the same whatever the other days are. Only which names were still free depends on those
/// of the month or since the cleanup before.
[[nodiscard]] std::vector<ExampleFile> exampleFiles(const Rhythm& rhythm, const Calendar& calendar,
                                                    std::span<const CheckedDay> days);

}  // namespace brindle
