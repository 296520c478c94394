#include "checks/LocationCheck.h"
#include "checks/Uncounted.h"
#include "platform/Paths.h"
#include "scan/LocationAccess.h"
#include "store/StoredHistory.h"
#include "support/TempHistory.h"
#include "support/TestMounts.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t fileBytes = 65'536;  // whole blocks of every file system

/// Real checks of locations on real drives.
class UsedSpace : public testing::Test {
protected:
    static void write(const fs::path& file) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << std::string(fileBytes, 'x');
    }

    void include(const fs::path& path) {
        const auto existing = history.store().loadLocations().get();
        history.store().insert(makeFolderOrDriveCandidate(path, existing, ++history.now).record).get();
    }

    UsedSpaceBreakdown breakdownOf(const std::string& volumeName) {
        const auto records = history.store().loadLocations().get();
        const auto trees = makeTreeSource();
        LocationCheck check(history.store(), *trees,
                            [&] { return uncountedHere(history.directory(), records); });
        for (const LocationRecord& record : records)
            EXPECT_TRUE(std::holds_alternative<LocationChecked>(
                check.run(record, std::make_shared<CancellationFlag>(), [](const ScanProgress&) {})));
        const auto snapshot = StoredHistory(history.store()).snapshot().get();
        for (const VolumeReading& volume : snapshot.volumes)
            if (volume.name == volumeName) return snapshot.breakdowns.at(volume.id);
        ADD_FAILURE() << "there is no sample of " << volumeName;
        return {};
    }

    TempFolder folder;
    TempHistory history;
};

TEST_F(UsedSpace, OfADriveIsTheSameHoweverItsFoldersAreIncluded) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = folder.path() / "image";
    const fs::path disk = folder.path() / "disk";
    const fs::path bound = folder.path() / "bound";
    fs::create_directory(disk);
    fs::create_directory(bound);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "no tools for ext4";
    const auto drive = TestMount::image(image, disk);
    const fs::path trash = disk / (".Trash-" + std::to_string(userID()));
    write(disk / "projects/source/a");
    write(disk / "projects/b");
    write(disk / "other/c");
    write(trash / "files/d");
    fs::permissions(disk, fs::perms(0755));
    const auto binding = TestMount::bind(disk / "projects", bound);
    ::sync();  // blocks are allocated when they are written

    struct statvfs status {};
    ASSERT_EQ(::statvfs(disk.c_str(), &status), 0);
    const auto used = static_cast<std::int64_t>((status.f_blocks - status.f_bavail) * status.f_frsize);

    include(bound / "source");
    include(disk / "projects");
    const auto ofFolders = breakdownOf("disk");
    EXPECT_EQ(ofFolders.files, 2 * fileBytes);
    EXPECT_EQ(ofFolders.trash, 0);

    include(bound);  // the folder again, by its other path
    include(disk);   // the whole of it
    const auto ofDrive = breakdownOf("disk");
    EXPECT_EQ(ofDrive.files, 3 * fileBytes);
    EXPECT_EQ(ofDrive.trash, fileBytes);
    EXPECT_EQ(ofDrive.otherVolumes, 0);
    EXPECT_EQ(ofDrive.total, used);
    EXPECT_EQ(ofDrive.notVisible, used - 4 * fileBytes);
}

}  // namespace
}  // namespace brindle
