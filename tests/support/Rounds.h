#pragma once

#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace brindle {

/// How often a test repeats itself: as often as every day, or as BRINDLE_TEST_ROUNDS tells.
inline int testRounds(int everyday) {
    const char* told = std::getenv("BRINDLE_TEST_ROUNDS");
    return told != nullptr ? std::stoi(told) : everyday;
}

/// Whether the tests are asked to take their time: what needs other programs than the everyday ones runs
/// then.
inline bool areTestsLong() {
    return std::getenv("BRINDLE_TEST_ROUNDS") != nullptr;
}

/// Tells `./dev soak` what a test of a promise did: how often, and how many faults it brought about.
inline void reportRounds(int rounds, int faults) {
    testing::Test::RecordProperty("rounds", rounds);
    testing::Test::RecordProperty("faults", faults);
}

/// A number that is another in every run, unless BRINDLE_TEST_SEED tells one. To be printed on failure.
inline std::uint64_t testSeed() {
    const char* told = std::getenv("BRINDLE_TEST_SEED");
    return told != nullptr ? std::stoull(told) : std::random_device()();
}

}  // namespace brindle
