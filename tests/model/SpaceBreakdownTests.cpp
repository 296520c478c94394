#include "model/SpaceBreakdown.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>

namespace brindle {
namespace {

UsedSpaceBreakdown parts(std::int64_t files, std::int64_t trash, std::int64_t notVisible,
                         std::int64_t otherVolumes, std::int64_t purgeable = 0) {
    return {.files = files,
            .trash = trash,
            .notVisible = notVisible,
            .otherVolumes = otherVolumes,
            .purgeable = purgeable,
            .total = files + trash + notVisible + otherVolumes};
}

TEST(SpaceBreakdown, DividesTheUsedSpace) {
    const VolumeReading reading{.totalBytes = 1000, .freeBytes = 400, .availableBytes = 400};
    EXPECT_EQ(spaceBreakdown(reading, {}), parts(0, 0, 600, 0));
    EXPECT_EQ(spaceBreakdown(reading, {.allocatedBytes = 500, .trashBytes = 100}), parts(400, 100, 100, 0));
    // What outgrew the reading is cut off, of the files first.
    EXPECT_EQ(spaceBreakdown(reading, {.allocatedBytes = 900, .trashBytes = 100}), parts(500, 100, 0, 0));
    EXPECT_EQ(spaceBreakdown(reading, {.allocatedBytes = 900, .trashBytes = 700}), parts(0, 600, 0, 0));

    // Blocks that are reserved for the system are used, and by no file.
    VolumeReading withReserve = reading;
    withReserve.volumeUsedBytes = 550;
    EXPECT_EQ(spaceBreakdown(withReserve, {.allocatedBytes = 550}), parts(550, 0, 50, 0));

    VolumeReading withPurgeable = reading;
    withPurgeable.availableBytes = 550;
    EXPECT_EQ(spaceBreakdown(withPurgeable, {}), parts(0, 0, 600, 0, 150));
}

TEST(SpaceBreakdown, OtherVolumesOfAPoolUseWhatIsNotVisibleHere) {
    VolumeReading reading{.totalBytes = 1000, .freeBytes = 400, .availableBytes = 400};
    FoundSpace found{.allocatedBytes = 100, .otherVolumesBytes = 200};
    EXPECT_EQ(spaceBreakdown(reading, found), parts(100, 0, 300, 200));
    found.otherVolumesBytes = 700;
    EXPECT_EQ(spaceBreakdown(reading, found), parts(100, 0, 0, 500));
    found.otherVolumesBytes = 0;
    EXPECT_EQ(spaceBreakdown(reading, found), parts(100, 0, 500, 0));
    reading.volumeUsedBytes = 150;  // where it is known, it is better than what checks found
    EXPECT_EQ(spaceBreakdown(reading, found), parts(100, 0, 50, 450));
}

TEST(SpaceBreakdown, AddsUpWhateverTheFigures) {
    std::mt19937_64 random(20260307);
    const auto figure = [&random]() -> std::int64_t {
        constexpr std::array<std::int64_t, 8> edges{0, 1, -1, 100, 101, INT64_MAX, INT64_MIN, 1'000'000};
        if (random() % 3 == 0) return edges[random() % edges.size()];
        return static_cast<std::int64_t>(random() % 1'000'000);
    };
    for (int round = 0; round < 20'000; ++round) {
        VolumeReading reading{.totalBytes = figure(),
                              .freeBytes = figure(),
                              .availableBytes = figure(),
                              .snapshotCount = round};
        if (random() % 2 == 0) reading.volumeUsedBytes = figure();
        FoundSpace found{.allocatedBytes = figure(), .trashBytes = figure()};
        if (random() % 2 == 0) found.otherVolumesBytes = figure();

        const auto divided = spaceBreakdown(reading, found);
        for (const auto part :
             {divided.files, divided.trash, divided.notVisible, divided.otherVolumes, divided.purgeable})
            ASSERT_TRUE(part >= 0 && part <= divided.total) << round;
        // Each difference fits, since no part is above the total.
        ASSERT_EQ(divided.total - divided.files - divided.trash - divided.otherVolumes, divided.notVisible);
        ASSERT_EQ(divided.snapshotCount, reading.snapshotCount);
        ASSERT_TRUE(found.otherVolumesBytes || divided.otherVolumes == 0);
        const bool isSane = reading.freeBytes >= 0 && reading.freeBytes <= reading.totalBytes;
        ASSERT_TRUE(!isSane || divided.total == reading.totalBytes - reading.freeBytes);
    }
}

}  // namespace
}  // namespace brindle
