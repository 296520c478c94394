#include "platform/Capacity.h"
#include "scan/Drives.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;

class DrivesTest : public testing::Test {
protected:
    void SetUp() override {
        SKIP_UNLESS_MOUNTS_WORK();
        for (const auto* name : {"first", "second", "bound"}) fs::create_directory(root / name);
        if (!makeImage(root / "image", "ext4")) GTEST_SKIP() << "no tools for ext4";
    }

    /// The drives that are mounted in the test's own folder.
    [[nodiscard]] std::vector<DriveInfo> drives(const std::vector<TrackedLocation>& tracked = {}) const {
        auto all = mountedDrives(tracked, MountTable::current());
        std::erase_if(all, [&](const auto& drive) { return !drive.mountPath.starts_with(root.native()); });
        return all;
    }

    const TempFolder temporary;
    const fs::path root = temporary.path();
};

TEST_F(DrivesTest, EachDriveIsListedOnceHoweverOftenItIsMountedUnlessItIsCovered) {
    const auto mount = TestMount::image(root / "image", root / "second");
    fs::create_directory(root / "second/folder");
    const auto bound = TestMount::bind(root / "second/folder", root / "bound");
    ASSERT_EQ(drives().size(), 1U);
    const auto drive = drives().front();
    EXPECT_EQ(drive.mountPath, root / "second");
    EXPECT_EQ(drive.scanPath, drive.mountPath);
    EXPECT_FALSE(drive.isStartup);

    const auto again = TestMount::bind(root / "second", root / "first");
    ASSERT_EQ(drives().size(), 1U);
    EXPECT_EQ(drives().front().id, drive.id);
    const auto found = [&](const char* likely) {
        return findDrive(drive.volumeID, root / likely, MountTable::current());
    };
    for (const auto* likely : {"first", "second"}) EXPECT_EQ(found(likely)->mountPath, root / likely);

    const auto covers = std::array{TestMount::memory(root / "first"), TestMount::memory(root / "second")};
    EXPECT_TRUE(drives().empty());
    EXPECT_FALSE(found("first"));
}

TEST_F(DrivesTest, EachMountedSubvolumeOfAPoolIsAVolumeOfItsOwn) {
    if (!makeImage(root / "pool", "btrfs")) GTEST_SKIP() << "no tools for btrfs";
    {
        const auto whole = TestMount::image(root / "pool", root / "first");
        const auto make = "cd '" + (root / "first").native() + "' && btrfs -q subvolume create a && " +
                          "btrfs -q subvolume create b && mkdir a/folder";
        ASSERT_EQ(std::system((make + " >/dev/null").c_str()), 0);
    }
    const auto first = TestMount::image(root / "pool", root / "first", "loop,subvol=a");
    const auto second = TestMount::image(root / "pool", root / "second", "loop,subvol=b");
    const auto bound = TestMount::bind(root / "first/folder", root / "bound");
    fs::create_directory(root / "memory");
    const auto memory = TestMount::memory(root / "memory");

    const auto listed = drives();
    ASSERT_EQ(listed.size(), 2U) << "neither a bound folder nor memory is a drive";
    EXPECT_NE(listed[0].volumeID, listed[1].volumeID);
    for (const auto& drive : listed) {
        EXPECT_EQ(findDrive(drive.volumeID, "", MountTable::current())->mountPath, drive.mountPath);
        const auto reading = readCapacity(drive.mountPath, drive.volumeID, "", 0);
        ASSERT_TRUE(reading);
        EXPECT_FALSE(reading->volumeUsedBytes) << "the pool's use is no volume's own";
        EXPECT_EQ(reading->snapshotCount, 0);
    }
}

TEST_F(DrivesTest, ALocationThatCoversTheDriveShowsOnIt) {
    const auto mount = TestMount::image(root / "image", root / "first");
    const auto volumeID = drives().front().volumeID;
    const TrackedLocation current{.kind = LocationKind::volume,
                                  .volumeID = volumeID,
                                  .status = LocationStatus::checking,
                                  .trackedBytes = 5};
    TrackedLocation ended = current;
    ended.status = LocationStatus::paused;
    ended.trackingEnd = LocalDay{2026, 3, 1};
    TrackedLocation folder = current;
    folder.kind = LocationKind::folder;
    folder.trackedBytes = 9;
    for (const auto& tracked : {std::vector{ended, current, folder}, {folder, current, ended}}) {
        const auto drive = drives(tracked).front();
        EXPECT_EQ(drive.status, LocationStatus::checking);
        EXPECT_EQ(drive.trackedBytes, 5);
        EXPECT_FALSE(drive.trackingEnd);
    }
    EXPECT_FALSE(drives({folder}).front().status);
}

}  // namespace
}  // namespace brindle
