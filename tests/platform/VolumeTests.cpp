#include "platform/Capacity.h"
#include "platform/FolderProbe.h"
#include "platform/Snapshots.h"
#include "platform/VolumeIdentity.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/statvfs.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

std::string volumeIDAt(const fs::path& folder) {
    return probeFolder(folder, MountTable::current()).volumeID;
}

TEST(VolumeIdentity, TheBestThatIsKnownCounts) {
    const Mount ext4{.type = "ext4", .source = "/dev/sda1"};
    const Mount btrfs{.type = "btrfs", .source = "/dev/sda2", .options = "rw,subvolid=257,subvol=/@home"};
    const BlockDevice whole{.fileSystemUUID = "0f1e-77aa", .persistentID = "disk-part1"};
    const BlockDevice unformatted{.persistentID = "disk-part1"};
    EXPECT_EQ(volumeIdentity(ext4, whole, -1), "0f1e-77aa");
    EXPECT_EQ(volumeIdentity(btrfs, whole, -1), "0f1e-77aa/257");
    EXPECT_EQ(volumeIdentity(ext4, unformatted, -1), "disk-part1");
    EXPECT_EQ(volumeIdentity(ext4, BlockDevice{}, -1), "/dev/sda1");
    EXPECT_EQ(volumeIdentity(ext4, {}, -1), "/dev/sda1");
    EXPECT_EQ(volumeIdentity({}, {}, -1), "");
}

TEST(VolumeIdentity, OnlySubvolumesHaveAPool) {
    EXPECT_EQ(poolIdentity("0f1e-77aa/257"), "0f1e-77aa");
    for (const char* alone : {"0f1e-77aa", "/dev/sda1", "/1", "server:/export", "0f1e/", "0f1e/2/3", ""})
        EXPECT_EQ(poolIdentity(alone), std::nullopt) << alone;
}

TEST(VolumeIdentity, AMountWithoutADeviceIsOnTheDeviceOfItsSource) {
    const auto anything = [](dev_t) { return std::optional(BlockDevice{.label = "found"}); };
    EXPECT_TRUE(deviceOf({.device = 0x801, .source = "anything"}, anything));
    for (const auto* source : {"tmpfs", "/dev/null", "/etc/passwd"})
        EXPECT_FALSE(deviceOf({.device = 40, .source = source}, anything)) << source;
}

TEST(VolumeIdentity, AVolumeIsDescribedByItsDeviceElseByItsMount) {
    auto probe = probeFolder("/", MountTable::current(), [](dev_t) { return std::nullopt; });
    EXPECT_EQ(describeVolume(probe).name, "System");
    const std::string target = "/media/ann/My Drive";
    probe.volumeID = "u";
    probe.mount->target = target;
    EXPECT_EQ(describeVolume(probe), (VolumeDescription{.id = "u", .name = "My Drive", .mountPath = target}));
    probe.device = BlockDevice{.label = "STICK", .fileSystemType = "exfat", .isInternal = false};
    EXPECT_EQ(
        describeVolume(probe),
        (VolumeDescription{
            .id = "u", .name = "STICK", .mountPath = target, .isInternal = false, .caseSensitive = false}));

    EXPECT_EQ(decodedDeviceText("Old\\x20Disk\\xc3\\xa4"), "Old Diskä");
    for (const auto* text : {"a\\x2", "a\\xzzb\\"}) EXPECT_EQ(decodedDeviceText(text), text);
}

TEST(Capacity, IsWhatTheFileSystemStates) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const auto image = folder.path() / "image";
    const auto drive = folder.path() / "drive";
    fs::create_directory(drive);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "no tools for ext4";
    const auto mount = TestMount::image(image, drive);
    fs::create_directory(drive / "location");

    struct statvfs status {};
    ASSERT_EQ(::statvfs(drive.c_str(), &status), 0);
    const auto bytes = [&](fsblkcnt_t blocks) { return static_cast<std::int64_t>(blocks * status.f_frsize); };
    const auto reading = readCapacity(drive / "location", "id", "fallback", 12.5);
    ASSERT_TRUE(reading);
    EXPECT_EQ(*reading, (VolumeReading{.id = "id",
                                       .name = "drive",
                                       .mountPath = drive,
                                       .totalBytes = bytes(status.f_blocks),
                                       .freeBytes = bytes(status.f_bavail),
                                       .availableBytes = bytes(status.f_bavail),
                                       .volumeUsedBytes = bytes(status.f_blocks - status.f_bfree),
                                       .isInternal = reading->isInternal,
                                       .readAt = 12.5}));
    EXPECT_LT(status.f_bavail, status.f_bfree) << "reserved blocks are neither free nor used";
    for (const auto* path : {"/nowhere", "/proc", "/etc/passwd"})
        EXPECT_FALSE(readCapacity(path, "id", "", 0)) << path;
}

class APool : public testing::Test {
protected:
    void SetUp() override {
        SKIP_UNLESS_MOUNTS_WORK();
        fs::create_directory(pool);
        if (!makeImage(folder.path() / "image", "btrfs")) GTEST_SKIP() << "no tools for btrfs";
        mount.emplace(TestMount::image(folder.path() / "image", pool));
    }

    void mountOnly(const std::string& subvolume) {
        mount.reset();
        mount.emplace(TestMount::image(folder.path() / "image", pool, "loop,subvol=" + subvolume));
    }
    void btrfs(const std::string& command) const {
        const auto whole = "cd '" + pool.native() + "' && btrfs -q " + command + " >/dev/null";
        ASSERT_EQ(std::system(whole.c_str()), 0) << command;
    }
    [[nodiscard]] std::optional<std::int64_t> countAt(const fs::path& path) const {
        const auto reading = readCapacity(path, "id", "", 0);
        return reading ? reading->snapshotCount : -1;
    }

    const TempFolder folder;
    const fs::path pool = folder.path() / "pool";
    std::optional<TestMount> mount;
};

TEST_F(APool, TellsItsSubvolumesApart) {
    const auto uuid = [](dev_t) { return std::optional(BlockDevice{.fileSystemUUID = "u"}); };
    const auto idAt = [&](const fs::path& path) {
        return probeFolder(path, MountTable::current(), uuid).volumeID;
    };
    btrfs("subvolume create data");
    EXPECT_EQ(idAt(pool), "u/5");
    EXPECT_EQ(idAt(pool / "data"), "u/256");
    const auto asTheKernelSays = volumeIDAt(pool / "data");
    EXPECT_NE(asTheKernelSays, volumeIDAt(pool));
    mountOnly("data");
    EXPECT_EQ(idAt(pool), "u/256");
    EXPECT_EQ(volumeIDAt(pool), asTheKernelSays);
}

TEST_F(APool, CountsItsReadOnlySnapshotsWhereverTheyLieOrNotAtAll) {
    EXPECT_EQ(countAt(pool), 0) << "none is not the same as unknown";
    btrfs("subvolume create data");
    btrfs("subvolume create data/inner");
    btrfs("subvolume create closed");
    btrfs("property set closed ro true");
    btrfs("subvolume snapshot data writable");
    EXPECT_EQ(countAt(pool), 0);

    fs::create_directory(pool / "hidden");
    btrfs("subvolume snapshot -r data first");
    btrfs("subvolume snapshot -r . data/inner/second");
    btrfs("subvolume snapshot -r data hidden/third");
    for (const auto* inside : {"", "data", "hidden"}) EXPECT_EQ(countAt(pool / inside), 3) << inside;

    for (const auto& path : {folder.path(), pool}) fs::permissions(path, fs::perms(0755));
    EXPECT_TRUE(holdsUnprivileged([&] { return !countAt(pool); })) << "who may not see all counts none";

    mountOnly("closed");
    EXPECT_EQ(countAt(pool), 3);
}

TEST(Snapshots, OfZFSAreTheEntriesOfItsFolderAtTheTop) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const auto memory = TestMount::memory(folder.path());
    fs::create_directories(folder.path() / "inner/.zfs/snapshot/none");
    const auto asZFS = [&] {
        auto mounts = MountTable::current().mounts();
        std::ranges::find(mounts, folder.path().native(), &Mount::target)->type = "zfs";
        return MountTable(std::move(mounts));
    };
    const auto count = [&](const MountTable& table) {
        return countSnapshots(probeFolder(folder.path() / "inner", table), table);
    };
    EXPECT_FALSE(count(asZFS()));
    fs::create_directories(folder.path() / ".zfs/snapshot");
    EXPECT_EQ(count(asZFS()), 0);
    for (const auto* name : {"daily", "..weekly"})
        fs::create_directory(folder.path() / ".zfs/snapshot" / name);
    EXPECT_EQ(count(asZFS()), 2);
    EXPECT_FALSE(count(MountTable::current())) << "tmpfs knows none";
}

}  // namespace
}  // namespace brindle
