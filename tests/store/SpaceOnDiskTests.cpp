#include "platform/Bookmark.h"
#include "store/SpaceOnDisk.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

/// Locations on drives, with what their latest checks found.
class Space : public testing::Test {
protected:
    /// A folder as it is seen at `path` while the folder `root` of the volume is mounted at `mountPath`.
    void add(const std::string& path, const std::string& volume, const std::string& mountPath,
             const std::string& root, LocationSpace space) {
        const Bookmark bookmark{
            .path = path, .volumeID = volume, .mountPath = mountPath, .mountedRoot = root, .folder = {}};
        locations.push_back(
            {.id = {path}, .path = path, .scanPath = path, .volumeID = volume, .bookmark = encode(bookmark)});
        found[{path}] = space;
    }

    [[nodiscard]] FoundSpace on(const std::string& volume) const {
        return SpaceOnDisk(locations, found).on(volume);
    }

    std::vector<LocationRecord> locations;
    std::unordered_map<LocationID, LocationSpace> found;
};

TEST_F(Space, OnlyOutermostLocationsAreSummed) {
    add("/home/ann/notes", "v", "/", "/", {10, 0});
    add("/home/ann", "v", "/", "/", {100, 5});
    add("/home/bob", "v", "/", "/", {1000, 0});
    add("/media/disk", "w", "/media/disk", "/", {7, 0});
    EXPECT_EQ(on("v"), (FoundSpace{1100, 5}));
    EXPECT_EQ(on("w"), (FoundSpace{7, 0}));
    EXPECT_EQ(on("nothing"), FoundSpace{});

    // The walk of an outer location takes an inner one whole, trash and all, without telling the trash apart.
    add("/home", "v", "/", "/", {1110, 0});
    EXPECT_EQ(on("v"), (FoundSpace{1110, 5}));
    locations.back().removedAt = 1;
    EXPECT_EQ(on("v"), (FoundSpace{1100, 5}));
    found.erase({"/home/ann"});  // included, and not checked yet: what lies in it was
    EXPECT_EQ(on("v"), (FoundSpace{1010, 0}));

    locations.push_back({.id = {"drive"}, .scanPath = "/mnt", .kind = LocationKind::volume, .volumeID = "v"});
    found[{"drive"}] = {5000, 50};
    EXPECT_EQ(on("v"), (FoundSpace{5000, 50}));
}

TEST_F(Space, AFolderUnderTwoMountPathsIsOneFolder) {
    add("/data/projects", "v", "/data", "/", {100, 0});
    add("/projects", "v", "/projects", "/projects", {100, 0});                // the same folder, bound there
    add("/srv/source/old", "v", "/srv/source", "/projects/source", {10, 0});  // and one below it
    add("/data/other", "v", "/data", "/", {1, 0});
    add("/source", "w", "/source", "/projects/source", {7, 0});  // another volume with such a path
    EXPECT_EQ(on("v"), (FoundSpace{101, 0}));
    EXPECT_EQ(on("w"), (FoundSpace{7, 0}));
}

TEST_F(Space, SubvolumesOfAPoolAreOtherVolumesToEachOther) {
    add("/home/ann", "u/256", "/home", "/@home", {100, 5});
    add("/home/ann/x", "u/256", "/home", "/@home", {30, 0});
    add("/var/lib", "u/257", "/var", "/@var", {40, 0});
    add("/media/disk", "w", "/media/disk", "/", {7, 0});
    EXPECT_EQ(on("u/256"), (FoundSpace{100, 5, 40}));
    EXPECT_EQ(on("u/257"), (FoundSpace{40, 0, 100}));
    EXPECT_EQ(on("w"), (FoundSpace{7, 0, std::nullopt}));
}

}  // namespace
}  // namespace brindle
