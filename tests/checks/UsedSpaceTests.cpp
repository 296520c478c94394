#include "checks/Coordinator.h"
#include "platform/Paths.h"
#include "store/StoredHistory.h"
#include "support/TestMounts.h"

#include <sys/statvfs.h>
#include <unistd.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t fileBytes = 65'536;  // whole blocks of every file system

/// Real checks of locations on real drives.
class UsedSpace : public Coordinator {
protected:
    void includeAt(const fs::path& place) {
        const auto existing = history.store().loadLocations().get();
        history.store().insert(makeFolderOrDriveCandidate(place, existing, ++history.now).record).get();
    }

    UsedSpaceBreakdown breakdownOf(const std::string& volumeName) {
        std::vector<LocationID> all;
        for (const auto& record : history.store().loadLocations().get()) all.push_back(record.id);
        EXPECT_EQ(run(all).committed.size(), all.size());
        const auto snapshot = StoredHistory(history.sharedStore()).snapshot().get();
        for (const VolumeReading& volume : snapshot.volumes)
            if (volume.name == volumeName) return snapshot.breakdowns.at(volume.id);
        ADD_FAILURE() << "there is no sample of " << volumeName;
        return {};
    }
};

TEST_F(UsedSpace, OfADriveIsTheSameHoweverItsFoldersAreIncluded) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = path("image");
    const fs::path disk = path("disk");
    const fs::path bound = path("bound");
    fs::create_directory(disk);
    fs::create_directory(bound);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "no tools for ext4";
    const auto drive = TestMount::image(image, disk);
    write("disk/projects/source/a", fileBytes);
    write("disk/projects/b", fileBytes);
    write("disk/other/c", fileBytes);
    write("disk/.Trash-" + std::to_string(userID()) + "/files/d", fileBytes);
    fs::permissions(disk, fs::perms(0755));
    const auto binding = TestMount::bind(disk / "projects", bound);
    ::sync();  // blocks are allocated when they are written

    struct statvfs status {};
    ASSERT_EQ(::statvfs(disk.c_str(), &status), 0);
    const auto used = static_cast<std::int64_t>((status.f_blocks - status.f_bavail) * status.f_frsize);

    includeAt(bound / "source");
    includeAt(disk / "projects");
    const auto ofFolders = breakdownOf("disk");
    EXPECT_EQ(ofFolders.files, 2 * fileBytes);
    EXPECT_EQ(ofFolders.trash, 0);

    includeAt(bound);  // the folder again, by its other path
    includeAt(disk);   // the whole of it
    const auto ofDrive = breakdownOf("disk");
    EXPECT_EQ(ofDrive.files, 3 * fileBytes);
    EXPECT_EQ(ofDrive.trash, fileBytes);
    EXPECT_EQ(ofDrive.otherVolumes, 0);
    EXPECT_EQ(ofDrive.total, used);
    EXPECT_EQ(ofDrive.notVisible, used - 4 * fileBytes);
}

}  // namespace
}  // namespace brindle
