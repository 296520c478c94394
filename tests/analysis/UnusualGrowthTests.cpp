#include "analysis/UnusualGrowth.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr std::int64_t MB = 1'000'000;
constexpr std::int64_t GB = 1'000 * MB;

/// `rare` on every so many-th of 60 days, else `usual`.
std::vector<std::int64_t> days(std::int64_t usual, std::int64_t rare = 0, std::size_t every = 61) {
    std::vector<std::int64_t> past(60, usual);
    for (std::size_t day = every - 1; day < past.size(); day += every) past[day] = rare;
    return past;
}

/// Days that go up and down between two values, in even steps.
std::vector<std::int64_t> between(std::int64_t least, std::int64_t most) {
    std::vector<std::int64_t> past;
    for (std::int64_t step = 0; step < 60; ++step)
        past.push_back(least + (most - least) * (step * 7 % 60) / 59);
    return past;
}

TEST(UnusualGrowth, IsJudgedByTheFoldersOwnPast) {
    const struct {
        const char* name;
        std::int64_t growth;
        std::vector<std::int64_t> past;
        std::optional<std::int64_t> most;
    } cases[] = {
        {"never changed", GB, days(0), 0},
        {"too little", GB - 1, days(0), {}},
        {"two weeks are enough", GB, std::vector<std::int64_t>(14), 0},
        {"less is not", GB, std::vector<std::int64_t>(13), {}},
        {"grows like this every day", 5 * GB, days(5 * GB), {}},
        {"a little more than every day", 5 * GB + 1, days(5 * GB), 5 * GB},
        {"grows like this every week", 20 * GB, days(0, 20 * GB, 7), {}},
        {"did once before", 20 * GB, days(0, 25 * GB, 60), 0},
        {"is cleaned up every other day", 3 * GB, days(3 * GB, -3 * GB, 2), {}},
        {"shrinks every day", GB, days(-2 * GB), 0},
        {"varies", 9 * GB, between(0, 4 * GB), {}},
        {"varies, but less", 12 * GB, between(0, 4 * GB), 4 * GB * 56 / 59},
    };
    for (const auto& [name, growth, past, most] : cases) EXPECT_EQ(unusualGrowth(growth, past), most) << name;
}

}  // namespace
}  // namespace brindle
