#include "analysis/Forecast.h"
#include "support/Rounds.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace brindle {
namespace {

const Calendar berlin("en_US", "Europe/Berlin");
const LocalDay today{2026, 4, 20};
constexpr double GB = 1e9;
constexpr double total = 1000 * GB;

/// One reading a day, of the last `days` days, at six in the evening. `available` takes the number of days
/// since the first one.
std::vector<VolumeReading> series(int days, const std::function<double(int)>& available) {
    std::vector<VolumeReading> samples;
    for (int i = 0; i < days; ++i) {
        const LocalDay day = berlin.addingDays(today, i + 1 - days);
        samples.push_back({.id = "drive",
                           .totalBytes = static_cast<std::int64_t>(total),
                           .availableBytes = static_cast<std::int64_t>(available(i)),
                           .readAt = berlin.time(day, 18)});
    }
    return samples;
}

std::function<double(int)> steady(double perDay, double atEnd, int days) {
    return [=](int i) { return atEnd + perDay * (days - 1 - i); };
}

/// The forecast in few words: "20 (18 to 22)", or why there is none.
std::string told(const std::vector<VolumeReading>& samples, const LocalDay& on = today) {
    const Forecast found = forecast(samples, on, berlin);
    if (const auto* reason = std::get_if<NoForecast>(&found)) return std::string(rawText(*reason));
    const auto& full = std::get<FullIn>(found);
    return std::to_string(full.days) + " (" + std::to_string(full.earliest) + " to " +
           std::to_string(full.latest) + ")";
}

TEST(Forecast, TellsASteadyPaceWhateverItsRhythmAndItsOutliers) {
    EXPECT_EQ(told(series(30, steady(GB, 20 * GB, 30))), "20 (20 to 20)");
    // Two a day on weekdays, nothing at weekends: ten a week.
    const auto week = [](int i) {
        const int weekdays = 5 * (i / 7) + std::min(i % 7, 5);
        return (100 - 2 * weekdays) * GB;
    };
    EXPECT_EQ(told(series(42, week)), "28 (26 to 30)");
    // One reading that stands out, and a large import right at the beginning.
    EXPECT_EQ(told(series(60, [](int i) { return (i == 40 ? 500 : 80 - i) * GB; })), "21 (21 to 21)");
    EXPECT_EQ(told(series(60, [](int i) { return ((i < 2 ? 400 : 80) - i) * GB; })), "21 (21 to 21)");
}

TEST(Forecast, TellsNothingThatTheReadingsDoNotBear) {
    EXPECT_EQ(told({}), "tooFewReadings");
    EXPECT_EQ(told(series(30, [](int) { return 50 * GB; })), "notFilling");
    EXPECT_EQ(told(series(30, steady(-GB, 50 * GB, 30))), "notFilling");
    EXPECT_EQ(told(series(30, steady(GB, 0, 30))), "full");
    EXPECT_EQ(told(series(30, steady(GB, 500 * GB, 30))), "tooFar");
    EXPECT_EQ(told(series(30, steady(GB / 1e6, 500 * GB, 30))), "tooFar");
    // One jump and nothing else; one jump beside a slow pace; a pace that rose.
    EXPECT_EQ(told(series(30, [](int i) { return (i < 15 ? 200 : 50) * GB; })), "uneven");
    EXPECT_EQ(told(series(60, [](int i) { return ((i < 30 ? 300 : 100) - i) * GB; })), "uneven");
    EXPECT_EQ(told(series(90, [](int i) { return (300 - i - 4 * std::max(0, i - 50)) * GB; })), "uneven");
    // Filled and emptied again, week after week or month after month; up and down.
    EXPECT_EQ(told(series(42, [](int i) { return (100 - 10 * (i % 7)) * GB; })), "notFilling");
    EXPECT_EQ(told(series(75, [](int i) { return (50 - i % 30) * GB; })), "uneven");
    EXPECT_EQ(told(series(30, [](int i) { return (100 - i - (i * i * 37 + i * 11) % 41) * GB; })), "uneven");
}

TEST(Forecast, TakesReadingsEnoughOfOneSizeOfTheDrive) {
    EXPECT_EQ(told(series(21, steady(GB, 20 * GB, 21))), "tooFewReadings");
    EXPECT_EQ(told(series(22, steady(GB, 20 * GB, 22))), "20 (20 to 20)");
    const auto without = [](std::vector<VolumeReading> samples, int from, int to) {
        samples.erase(samples.begin() + from, samples.begin() + to);
        return samples;
    };
    const auto month = series(30, steady(GB, 20 * GB, 30));
    EXPECT_EQ(told(without(month, 10, 22)), "20 (20 to 20)");
    EXPECT_EQ(told(without(month, 10, 29)), "tooFewReadings");  // most of the time hangs on one reading
    EXPECT_EQ(told(without(month, 4, 25)), "tooFewReadings");
    EXPECT_EQ(told(without(month, 23, 30)), "20 (20 to 20)");  // 27, a week ago
    EXPECT_EQ(told(without(month, 22, 30)), "notSeenLately");

    auto resized = month;
    for (int i = 0; i < 20; ++i) resized.at(static_cast<std::size_t>(i)).totalBytes /= 2;
    EXPECT_EQ(told(resized), "tooFewReadings");
    auto grown = series(44, steady(GB, 20 * GB, 44));
    for (int i = 0; i < 20; ++i) {
        auto& sample = grown.at(static_cast<std::size_t>(i));
        sample.totalBytes /= 2;
        sample.availableBytes /= 2;
    }
    EXPECT_EQ(told(grown), "20 (20 to 20)");
    EXPECT_EQ(std::get<FullIn>(forecast(grown, today, berlin)).since, (LocalDay{2026, 3, 28}));
    auto pooled = month;
    for (std::size_t i = 0; i < pooled.size(); ++i)
        pooled[i].totalBytes += static_cast<int>(i % 3) * 1'000'000'000;
    EXPECT_EQ(told(pooled), "20 (20 to 20)");
}

TEST(Forecast, ADayCountsOnceAndDaysAheadNotAtAll) {
    const auto month = series(30, steady(GB, 20 * GB, 30));
    auto often = month;
    for (int day = 0; day < 10; ++day) {
        for (int hour = 1; hour < 18; ++hour) {  // before the last of the day, and listed after it
            often.push_back(month.at(static_cast<std::size_t>(day)));
            often.back().readAt -= hour * 3600;
            often.back().availableBytes = 7;
        }
    }
    EXPECT_EQ(told(often), "20 (20 to 20)");
    auto ahead = month;
    for (int day = 1; day < 30; ++day) {
        ahead.push_back(month.back());
        ahead.back().readAt += day * 86'400;
        ahead.back().totalBytes = 1;
    }
    EXPECT_EQ(told(ahead), "20 (20 to 20)");
}

TEST(Forecast, IsNearTheTruthOrSilent) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    int figures = 0;
    const int rounds = testRounds(100);
    for (int round = 0; round < rounds; ++round) {
        const int days = std::uniform_int_distribution(15, 90)(random);
        const double perDay = std::uniform_real_distribution(0.5, 5.0)(random) * GB;
        const double left = std::uniform_real_distribution(5.0, 60.0)(random);  // days
        std::normal_distribution noise(0.0, perDay * std::uniform_real_distribution(0.0, 8.0)(random));
        auto samples = series(days, [&](int i) { return perDay * (left + days - 1 - i) + noise(random); });
        samples.back().availableBytes = static_cast<std::int64_t>(perDay * left);
        const Forecast found = forecast(samples, today, berlin);
        if (const auto* full = std::get_if<FullIn>(&found)) {
            ++figures;
            EXPECT_NEAR(full->days, left, 1 + left * 0.5);
            EXPECT_LE(full->earliest, full->days);
            EXPECT_GE(full->latest, full->days);
            EXPECT_LE(full->latest, 2 * full->earliest + 2);
        }
    }
    EXPECT_GT(figures, rounds / 4);
}

TEST(Forecast, IsASentenceInTheUnitThatItsRangeBears) {
    const auto since = LocalDay{2026, 3, 7};
    const auto text = [&](int days, int earliest, int latest) {
        return sentence(FullIn{days, earliest, latest, 1, since}, berlin);
    };
    EXPECT_EQ(text(1, 1, 1), "At the pace since Saturday, March 7, this drive will be full in about 1 day.");
    EXPECT_EQ(text(12, 10, 15),
              "At the pace since Saturday, March 7, this drive will be full in about 12 days (10 to 15).");
    EXPECT_EQ(text(23, 20, 24),
              "At the pace since Saturday, March 7, this drive will be full in about 3 weeks.");
    EXPECT_EQ(text(200, 150, 290),
              "At the pace since Saturday, March 7, this drive will be full in about 7 months (5 to 10).");
    EXPECT_EQ(text(0, 0, 1), "This drive will be full within a day if it goes on like this.");
    EXPECT_EQ(sentence(NoForecast::uneven, berlin), "This drive fills up too unevenly for a forecast.");
}

}  // namespace
}  // namespace brindle
