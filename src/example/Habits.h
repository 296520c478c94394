#pragma once

#include "example/Rhythm.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace brindle {

/// When a file goes away again.
struct Lifetime {
    enum class End { afterDays, atCleanup, atArchiving };
    End end = End::afterDays;
    int least = 1;  // days before it goes; the cleanup or archiving is the next one after them
    int most = 1;   // of days only
};

/// Files of one kind that keep coming into one folder.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): in the order in which one reads a row
struct Habit {
    Place place;
    std::string_view folder;  // components joined by "/"; {date} and {month} are those of the day
    std::string_view name;    // a template; empty for groups of small files
    std::int64_t leastBytes;  // of a file or group; small ones are likelier
    std::int64_t mostBytes;
    int tenthsPerWorkday;  // how many come, in tenths
    int tenthsPerWeekendDay;
    Lifetime lifetime;
    int edits = 0;                       // how often a file is changed at most in the days after it came
    bool isAutomatic = false;            // comes and goes also at night
    bool isTrashed = false;              // goes to the Trash, which keeps its space until it is emptied
    const Occasion* occasion = nullptr;  // the only days on which they come
    int leastFiles = 1;                  // of a group
    int mostFiles = 1;
    std::string_view archive = {};  // a folder of the same place that files move to instead of going away
};

[[nodiscard]] std::span<const Habit> habits();

/// A file that was always there and is written every day: it grows, and is compacted after so many days.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): in the order in which one reads a row
struct StandingFile {
    Place place;
    std::string_view folder;
    std::string_view name;
    std::int64_t leastBytes;
    std::int64_t bytesPerDay;
    int daysToCompaction;
};

[[nodiscard]] std::span<const StandingFile> standingFiles();

}  // namespace brindle
