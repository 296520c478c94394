#include "platform/Mounts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <sys/sysmacros.h>
#include <system_error>
#include <utility>

namespace brindle {
namespace {

MountTable workstation() {
    const std::string recorded = BRINDLE_FIXTURES "/mounts/workstation";
    return MountTable::read(recorded + ".mountinfo", recorded + ".fstab");
}

TEST(Mounts, RowsAreReadWhole) {
    const auto table = workstation();
    const auto* disk = table.holding("/media/ann/Old Disk/x");
    ASSERT_NE(disk, nullptr);
    EXPECT_EQ(*disk, (Mount{.id = 50,
                            .parentID = 30,
                            .device = makedev(8, 17),
                            .target = "/media/ann/Old Disk",
                            .root = "/",
                            .type = "fuseblk",
                            .source = "/dev/sdb1",
                            .options = "rw,nosuid,nodev,user_id=0"}));
    EXPECT_EQ(optionValue(*table.holding("/srv"), "subvolid"), "258");
    EXPECT_TRUE(hasOption(*table.holding("/mnt/backup"), "x-gvfs-hide"));
    EXPECT_FALSE(hasOption(*table.holding("/mnt/backup"), "noatime")) << "what the kernel says is what holds";
    EXPECT_THROW((void)MountTable::read("/nowhere/mountinfo", "/nowhere/fstab"), std::system_error);
}

TEST(Mounts, APathLiesOnTheMountThatTheSystemWouldReach) {
    const auto table = workstation();
    const std::pair<const char*, int> cases[] = {
        {"/", 30},  // not the root file system of the start
        {"/homely", 30},
        {"/home/ann/Photos/2020", 43},
        {"/home/ann/Photos2", 41},
        {"/mnt/tapes/x", 82},             // mounted over the automount point
        {"/mnt/a/inner/x", 91},           // covered by a later mount further up
        {"/media/ann/Old\\040Disk", 30},  // the table's way of writing is no name
    };
    for (const auto& [path, mount] : cases) EXPECT_EQ(table.holding(path)->id, mount) << path;
    EXPECT_EQ(MountTable({}).holding("/"), nullptr);
}

TEST(Mounts, KindsAreToldFromTheRow) {
    enum Kind { drive, local, remote, pseudo };
    const struct {
        int id;
        Kind kind;
    } cases[] = {
        {22, pseudo}, {23, pseudo}, {24, pseudo}, {25, local},  {26, local},  {30, drive},  {31, pseudo},
        {40, local},  {41, drive},  {42, drive},  {43, local},  {44, local},  {50, drive},  {51, drive},
        {52, local},  {60, local},  {61, local},  {62, local},  {63, pseudo}, {64, remote}, {70, remote},
        {71, remote}, {72, remote}, {73, remote}, {74, remote}, {75, remote}, {76, remote}, {77, drive},
        {78, drive},  {79, remote}, {80, pseudo}, {81, pseudo}, {82, drive},  {92, drive},
    };
    const auto table = workstation();
    for (const auto& [id, kind] : cases) {
        const auto mount = std::ranges::find(table.mounts(), id, &Mount::id);
        EXPECT_EQ(isLocal(*mount), kind != remote) << mount->target;
        EXPECT_EQ(isPseudo(*mount), kind == pseudo) << mount->target;
        EXPECT_EQ(isDrive(*mount), kind == drive) << mount->target;
        EXPECT_EQ(isShare(*mount), kind == remote && mount->type != "fuse.gvfsd-fuse") << mount->target;
    }
}

}  // namespace
}  // namespace brindle
