#include "example/ExampleFiles.h"

#include "example/Habits.h"
#include "example/NameTemplates.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <unordered_map>

namespace brindle {
namespace {

// What numbers are drawn for, besides the occasions.
constexpr std::uint64_t saltOfChecks = 101;
constexpr std::uint64_t saltOfBirths = 102;
constexpr std::uint64_t saltOfStandingFiles = 103;

constexpr int workdayHours[] = {0, 8, 9, 10, 11, 13, 14, 15, 16, 18, 20, 22};
constexpr int weekendHours[] = {0, 10, 12, 15, 18, 21};
constexpr UnixTime secondsPerHour = 3600;
constexpr UnixTime secondsPerMinute = 60;

// The checks at which somebody tidies up, one sitting each.
constexpr std::size_t checkOfCleanup = 2;
constexpr std::size_t checkOfArchiving = 3;

/// Counted from the day on which a file came.
constexpr int longestInArchive = longestLife - 6;

std::span<const int> hoursOn(DayNumber day) {
    if (Rhythm::isWeekend(day)) return weekendHours;
    return workdayHours;
}

/// The check at which something happens on a day: any, or any but the one at night.
std::size_t drawnCheck(RandomSource& random, DayNumber day, bool isAutomatic) {
    return static_cast<std::size_t>(
        random.between(isAutomatic ? 0 : 1, static_cast<std::int64_t>(hoursOn(day).size()) - 1));
}

std::int64_t drawnCount(RandomSource& random, int tenths) {
    if (tenths == 0) return 0;
    const std::int64_t drawn = random.between(tenths / 2, tenths + tenths / 2);
    return drawn / 10 + (random.between(0, 9) < drawn % 10 ? 1 : 0);
}

FolderPath folderOn(std::string_view habitFolder, const LocalDay& day) {
    constexpr std::size_t lengthOfMonth = 7;  // of "2026-03"
    std::string path(habitFolder);
    const auto replace = [&path](std::string_view placeholder, const std::string& text) {
        if (const auto at = path.find(placeholder); at != path.npos)
            path.replace(at, placeholder.size(), text);
    };
    replace("{date}", day.text());
    replace("{month}", day.text().substr(0, lengthOfMonth));

    std::vector<std::string> components;
    for (std::size_t begin = 0; begin < path.size();) {
        const auto end = std::min(path.find('/', begin), path.size());
        components.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return components;
}

/// Brings files into the world, day by day.
class Births {
public:
    Births(const Rhythm& rhythm, const Calendar& calendar, std::span<const CheckedDay> days)
        : rhythm_(rhythm), calendar_(calendar), days_(days) {}

    void bearOn(std::size_t day) {
        RandomSource random = rhythm_.source(saltOfBirths, days_[day].number);
        const std::size_t firstBorn = files_.size();
        std::vector<const Habit*> habitOf;
        for (const Habit& habit : habits()) {
            const FolderPath folder = folderOn(habit.folder, days_[day].day);
            for (std::int64_t left = countOn(day, habit, random); left > 0; --left) {
                files_.push_back(born(day, habit, folder, random));
                habitOf.push_back(&habit);
            }
        }
        // Names are drawn last: one more draw, for a name that is taken, changes nothing but names.
        for (std::size_t i = 0; i < habitOf.size(); ++i) name(files_[firstBorn + i], *habitOf[i], random);
        for (std::size_t i = 0; i < habitOf.size(); ++i) archive(firstBorn + i, day, *habitOf[i]);
    }

    [[nodiscard]] std::vector<ExampleFile> take() { return std::move(files_); }

private:
    [[nodiscard]] std::int64_t countOn(std::size_t day, const Habit& habit, RandomSource& random) const {
        const DayNumber number = days_[day].number;
        if (!rhythm_.isInUse(habit.place, number)) return 0;
        if (habit.occasion != nullptr && !rhythm_.falls(*habit.occasion, number)) return 0;
        // Who tidies up begins with nothing new.
        if (habit.lifetime.end == Lifetime::End::atCleanup && rhythm_.falls(cleanup, number)) return 0;
        return drawnCount(random,
                          Rhythm::isWeekend(number) ? habit.tenthsPerWeekendDay : habit.tenthsPerWorkday);
    }

    [[nodiscard]] ExampleFile born(std::size_t day, const Habit& habit, const FolderPath& folder,
                                   RandomSource& random) const {
        const DayNumber number = days_[day].number;
        ExampleFile file{.place = habit.place,
                         .folder = folder,
                         .fileCount = random.between(habit.leastFiles, habit.mostFiles),
                         .isTrashed = habit.isTrashed};
        std::int64_t bytes = std::min(random.between(habit.leastBytes, habit.mostBytes),
                                      random.between(habit.leastBytes, habit.mostBytes));
        add(file, number, drawnCheck(random, number, habit.isAutomatic), bytes);

        const auto [end, endCheck] = endOf(habit, number, random);
        DayNumber edited = number;
        for (auto edits = random.between(0, habit.edits); edits > 0; --edits) {
            constexpr int longestPause = 4;
            edited = rhythm_.nextInUse(habit.place,
                                       edited + static_cast<DayNumber>(random.between(1, longestPause)));
            const std::size_t check = drawnCheck(random, edited, habit.isAutomatic);
            constexpr int leastPercent = 75;
            constexpr int mostPercent = 145;
            bytes = bytes * random.between(leastPercent, mostPercent) / 100;
            if (edited < end) add(file, edited, check, bytes);
        }
        add(file, end, endCheck, 0);
        return file;
    }

    /// The day and the check at which a file goes that came on a day.
    [[nodiscard]] std::pair<DayNumber, std::size_t> endOf(const Habit& habit, DayNumber day,
                                                          RandomSource& random) const {
        const Lifetime& life = habit.lifetime;
        const DayNumber earliest = day + static_cast<DayNumber>(random.between(life.least, life.most));
        if (life.end == Lifetime::End::afterDays) {
            const DayNumber end = rhythm_.nextInUse(habit.place, earliest);
            return {end, drawnCheck(random, end, habit.isAutomatic)};
        }
        const bool isCleanup = life.end == Lifetime::End::atCleanup;
        return {rhythm_.nextInUse(habit.place, rhythm_.next(isCleanup ? cleanup : archiving, earliest)),
                isCleanup ? checkOfCleanup : checkOfArchiving};
    }

    void add(ExampleFile& file, DayNumber day, std::size_t check, std::int64_t bytes) const {
        const auto index = static_cast<std::size_t>(day - days_.front().number);
        if (index < days_.size()) file.steps.push_back({index, check, bytes});
    }

    /// Where the file goes away, one like it comes into the archive.
    void archive(std::size_t which, std::size_t day, const Habit& habit) {
        const ExampleFile& file = files_[which];
        if (habit.archive.empty() || file.steps.back().bytes != 0) return;
        const SizeStep& end = file.steps.back();
        ExampleFile archived = file;
        archived.folder = folderOn(habit.archive, days_[day].day);
        archived.steps = {{end.day, end.check, std::prev(file.steps.end(), 2)->bytes}};
        const DayNumber last = days_[day].number + longestInArchive;
        add(archived, rhythm_.nextInUse(habit.place, last), checkOfArchiving, 0);
        files_.push_back(std::move(archived));
    }

    /// Draws until no other file in the folder has the name, nor one in the archive.
    void name(ExampleFile& file, const Habit& habit, RandomSource& random) {
        const std::string_view nameTemplate = habit.name;
        if (nameTemplate.empty()) return;
        const SizeStep& birth = file.steps.front();
        const SizeStep& last = file.steps.back();
        const std::size_t end = last.bytes == 0 && habit.archive.empty() ? last.day : days_.size();
        const CheckedDay& day = days_[birth.day];
        constexpr int mostDraws = 1000;  // habits leave about half of the names free
        for (int draw = 0; draw < mostDraws; ++draw) {
            file.name = expandedName(nameTemplate, day.day, day.checks[birth.check], calendar_, random);
            auto& taken = takenUntil_[fmt::format("{}/{}", fmt::join(file.folder, "/"), file.name)];
            if (taken > birth.day) continue;
            taken = end + 1;
            return;
        }
    }

    const Rhythm& rhythm_;
    const Calendar& calendar_;
    std::span<const CheckedDay> days_;
    std::vector<ExampleFile> files_;
    std::unordered_map<std::string, std::size_t> takenUntil_;  // by path: the first day on which it is free
};

ExampleFile standing(std::size_t which, const Rhythm& rhythm, std::span<const CheckedDay> days) {
    const StandingFile& file = standingFiles()[which];
    ExampleFile result{
        .place = file.place, .folder = folderOn(file.folder, {}), .name = std::string(file.name)};
    for (std::size_t i = 0; i < days.size(); ++i) {
        const DayNumber day = days[i].number;
        if (!rhythm.isInUse(file.place, day)) continue;
        RandomSource random = rhythm.source(saltOfStandingFiles + which, day);
        const std::int64_t sinceCompaction =
            (day % file.daysToCompaction + file.daysToCompaction) % file.daysToCompaction;
        result.steps.push_back(
            {i, drawnCheck(random, day, true),
             file.leastBytes + sinceCompaction * file.bytesPerDay + random.between(0, file.bytesPerDay / 2)});
    }
    return result;
}

}  // namespace

std::vector<CheckedDay> checkedDays(const Rhythm& rhythm, const Calendar& calendar, const LocalDay& first,
                                    const LocalDay& last) {
    constexpr LocalDay dayZero{.year = 2000, .month = 1, .day = 3};
    DayNumber number = calendar.daysBetween(dayZero, first);
    std::vector<CheckedDay> days;
    for (const LocalDay& day : calendar.days(first, last)) {
        CheckedDay& checked = days.emplace_back(CheckedDay{.day = day, .number = number, .checks = {}});
        RandomSource random = rhythm.source(saltOfChecks, number);
        // Clocks are moved at night: the hours of the day are counted from the first one in it.
        const int morning = hoursOn(number)[1];
        const UnixTime beginOfMorning = calendar.time(day, morning);
        for (const int hour : hoursOn(number)) {
            const UnixTime begin = hour < morning ? calendar.time(day, hour)
                                                  : beginOfMorning + (hour - morning) * secondsPerHour;
            checked.checks.push_back(begin + static_cast<double>(random.between(3, 50)) * secondsPerMinute +
                                     static_cast<double>(random.between(0, 59)));
        }
        ++number;
    }
    return days;
}

std::vector<ExampleFile> exampleFiles(const Rhythm& rhythm, const Calendar& calendar,
                                      std::span<const CheckedDay> days) {
    Births births(rhythm, calendar, days);
    for (std::size_t day = 0; day < days.size(); ++day) births.bearOn(day);
    std::vector<ExampleFile> files = births.take();
    for (std::size_t i = 0; i < standingFiles().size(); ++i) files.push_back(standing(i, rhythm, days));
    return files;
}

}  // namespace brindle
