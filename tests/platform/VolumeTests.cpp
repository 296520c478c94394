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
    EXPECT_EQ(deviceOf({.device = 0x801, .source = "anything"}, anything)->label, "found");
    EXPECT_FALSE(deviceOf({.device = 40, .source = "tmpfs"}, anything));
    EXPECT_FALSE(deviceOf({.device = 40, .source = "/dev/null"}, anything));
    EXPECT_FALSE(deviceOf({.device = 40, .source = "/etc/passwd"}, anything));
}

TEST(VolumeIdentity, NamesAreReadAsTheUserWroteThem) {
    EXPECT_EQ(decodedDeviceText("Old\\x20Disk\\xc3\\xa4"), "Old Diskä");
    EXPECT_EQ(decodedDeviceText("a\\x2"), "a\\x2");
    EXPECT_EQ(decodedDeviceText("a\\xzzb\\"), "a\\xzzb\\");
}

TEST(VolumeIdentity, AVolumeIsDescribedByItsDeviceElseByItsMount) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const auto image = folder.path() / "image";
    const auto drive = folder.path() / "My Drive";
    fs::create_directory(drive);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "no tools for ext4";
    const auto mount = TestMount::image(image, drive);
    const auto mounts = MountTable::current();

    const struct {
        std::optional<BlockDevice> device;
        VolumeDescription expected;
    } cases[] = {
        {BlockDevice{.fileSystemUUID = "u", .label = "STICK", .isInternal = false},
         {.id = "u", .name = "STICK", .mountPath = drive, .isInternal = false}},
        {BlockDevice{.fileSystemUUID = "u", .fileSystemType = "exfat"},
         {.id = "u", .name = "My Drive", .mountPath = drive, .caseSensitive = false}},
        {std::nullopt, {.id = volumeIDAt(drive), .name = "My Drive", .mountPath = drive}},
    };
    for (const auto& one : cases)
        EXPECT_EQ(describeVolume(probeFolder(drive, mounts, [&](dev_t) { return one.device; })),
                  one.expected);

    const auto startup = probeFolder("/", mounts, [](dev_t) { return std::nullopt; });
    EXPECT_EQ(describeVolume(startup).name, "System");
}

TEST(VolumeIdentity, StaysAcrossARemountAndTellsDrivesApart) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const auto image = folder.path() / "image";
    const auto other = folder.path() / "other";
    fs::create_directories(folder.path() / "a");
    fs::create_directories(folder.path() / "b");
    if (!makeImage(image, "ext4") || !makeImage(other, "ext4")) GTEST_SKIP() << "no tools for ext4";

    std::string first;
    {
        const auto mount = TestMount::image(image, folder.path() / "a");
        first = volumeIDAt(folder.path() / "a");
    }
    const auto mount = TestMount::image(image, folder.path() / "b");
    const auto otherMount = TestMount::image(other, folder.path() / "a");
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(volumeIDAt(folder.path() / "b"), first);
    EXPECT_NE(volumeIDAt(folder.path() / "a"), first);
    EXPECT_NE(volumeIDAt(folder.path()), first);
}

TEST(VolumeIdentity, TellsSubvolumesOfOnePoolApart) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const auto image = folder.path() / "image";
    const auto pool = folder.path() / "pool";
    const auto inner = folder.path() / "inner";
    fs::create_directory(pool);
    fs::create_directory(inner);
    if (!makeImage(image, "btrfs")) GTEST_SKIP() << "no tools for btrfs";
    auto whole = TestMount::image(image, pool);
    ASSERT_EQ(std::system(("btrfs subvolume create '" + (pool / "sub").native() + "' >/dev/null").c_str()),
              0);

    const auto uuid = [](dev_t) { return std::optional(BlockDevice{.fileSystemUUID = "u"}); };
    const auto mounts = MountTable::current();
    EXPECT_EQ(probeFolder(pool, mounts, uuid).volumeID, "u/5");
    EXPECT_EQ(probeFolder(pool / "sub", mounts, uuid).volumeID, "u/256");

    const auto withoutDatabase = volumeIDAt(pool / "sub");
    EXPECT_NE(withoutDatabase, volumeIDAt(pool));
    whole.unmount();
    const auto part = TestMount::image(image, inner, "loop,subvol=sub");
    EXPECT_EQ(volumeIDAt(inner), withoutDatabase);
    EXPECT_EQ(probeFolder(inner, MountTable::current(), uuid).volumeID, "u/256");

    const auto reading = readCapacity(inner, "id", "", 0);
    ASSERT_TRUE(reading);
    EXPECT_FALSE(reading->volumeUsedBytes) << "the used blocks are the whole pool's";
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

    const auto reading = readCapacity(drive / "location", "id", "fallback", 12.5);
    ASSERT_TRUE(reading);
    struct statvfs status {};
    ASSERT_EQ(::statvfs(drive.c_str(), &status), 0);
    const auto block = static_cast<std::int64_t>(status.f_frsize);
    EXPECT_EQ(reading->id, "id");
    EXPECT_EQ(reading->name, "drive");
    EXPECT_EQ(reading->mountPath, drive.native());
    EXPECT_EQ(reading->totalBytes, static_cast<std::int64_t>(status.f_blocks) * block);
    EXPECT_EQ(reading->freeBytes, static_cast<std::int64_t>(status.f_bavail) * block);
    EXPECT_EQ(reading->availableBytes, reading->freeBytes);
    EXPECT_EQ(reading->volumeUsedBytes, static_cast<std::int64_t>(status.f_blocks - status.f_bfree) * block);
    EXPECT_LT(reading->freeBytes + *reading->volumeUsedBytes, reading->totalBytes)
        << "reserved blocks are neither";
    EXPECT_FALSE(reading->snapshotCount);
    EXPECT_EQ(reading->readAt, 12.5);
}

/// A pool with subvolumes of every kind, of which the read-only snapshots count.
class SnapshotsOfAPool : public testing::Test {
protected:
    void SetUp() override {
        SKIP_UNLESS_MOUNTS_WORK();
        fs::create_directory(pool);
        if (!makeImage(folder.path() / "image", "btrfs")) GTEST_SKIP() << "no tools for btrfs";
        mount.emplace(TestMount::image(folder.path() / "image", pool));
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

TEST_F(SnapshotsOfAPool, AreTheReadOnlyOnesWhereverTheyLie) {
    EXPECT_EQ(countAt(pool), 0) << "none is not the same as unknown";
    btrfs("subvolume create data");
    btrfs("subvolume create data/inner");
    btrfs("subvolume create closed");
    btrfs("property set closed ro true");
    btrfs("subvolume snapshot data writable");
    EXPECT_EQ(countAt(pool), 0);

    fs::create_directory(pool / "hidden");
    fs::permissions(pool / "hidden", fs::perms(0700));
    btrfs("subvolume snapshot -r data first");
    btrfs("subvolume snapshot -r . data/inner/second");
    btrfs("subvolume snapshot -r data hidden/third");
    EXPECT_EQ(countAt(pool), 3);
    EXPECT_EQ(countAt(pool / "data"), 3);
    EXPECT_EQ(countAt(pool / "hidden"), 3);

    fs::create_directory(folder.path() / "part");
    mount.reset();
    mount.emplace(TestMount::image(folder.path() / "image", folder.path() / "part", "loop,subvol=closed"));
    EXPECT_EQ(countAt(folder.path() / "part"), 3) << "wherever the pool is entered";
}

TEST_F(SnapshotsOfAPool, AreNotCountedByHalf) {
    for (const auto& path : {folder.path(), pool}) fs::permissions(path, fs::perms(0755));
    btrfs("subvolume create data");
    btrfs("subvolume snapshot -r data seen");
    EXPECT_TRUE(holdsUnprivileged([&] { return !countAt(pool); }));
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

TEST(Capacity, NothingIsReadWhereNothingIsStated) {
    EXPECT_FALSE(readCapacity("/nowhere", "id", "", 0));
    EXPECT_FALSE(readCapacity("/proc", "id", "", 0));
    EXPECT_FALSE(readCapacity("/etc/passwd", "id", "", 0));
    EXPECT_FALSE(readCapacity("/", "id", "", 0, MountTable({})));
}

}  // namespace
}  // namespace brindle
