#include "platform/Bookmark.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <variant>

namespace brindle {
namespace {

namespace fs = std::filesystem;

Bookmark bookmarkOf(const fs::path& folder) {
    return makeBookmark(folder, probeFolder(folder, MountTable::current()));
}

/// "path" or "path (stale)", "gone", "refused".
std::string resolved(const Bookmark& bookmark) {
    const auto resolution = resolve(bookmark, MountTable::current());
    if (std::holds_alternative<FolderGone>(resolution)) return "gone";
    if (std::holds_alternative<FolderRefused>(resolution)) return "refused";
    const auto& found = std::get<FolderFound>(resolution);
    return found.path + (found.isStale ? " (stale)" : "");
}

TEST(Bookmark, ComesBackFromItsBytesAndFromNoOthers) {
    const FolderIdentity old{.inode = std::numeric_limits<std::uint64_t>::max(),
                             .birth = BirthTime{-1, 999'999'999}};
    for (const auto& bookmark : {Bookmark{"/", "", "", "", {.inode = 2}},
                                 Bookmark{"/home/\xff\n", "u/257", "/home", "/@home", old}, bookmarkOf("/")})
        EXPECT_EQ(decodeBookmark(encode(bookmark)), bookmark);

    const auto bytes = encode({"/home/ann", "u", "/", "/", {.inode = 7, .birth = BirthTime{1, 2}}});
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(decodeBookmark(std::span(bytes).first(size))) << size;
    auto longer = bytes;
    longer.push_back(std::byte{0});
    EXPECT_FALSE(decodeBookmark(longer));
    auto later = bytes;
    later[0] = std::byte{2};
    EXPECT_FALSE(decodeBookmark(later));
    const std::string paths[] = {"", "home", "/home/../ann", "/home/", {"/a\0b", 4}};
    for (const auto& path : paths) EXPECT_FALSE(decodeBookmark(encode({.path = path}))) << path;
    EXPECT_FALSE(decodeBookmark(encode({.path = "/a", .folder = {.birth = BirthTime{0, 1'000'000'000}}})));
}

class BookmarkedFolder : public testing::Test {
protected:
    BookmarkedFolder() {
        fs::permissions(root, fs::perms(0755));
        fs::create_directory(photos);
        std::ofstream(photos / "inside").close();
    }

    const TempFolder temporary;
    const fs::path root = temporary.path();
    const fs::path photos = root / "Photos";
};

TEST_F(BookmarkedFolder, IsFoundUnderItsNewNameBesideItsOldPlaceWhateverHappenedInIt) {
    const auto bookmark = bookmarkOf(photos);
    fs::create_directory(photos / "new");
    fs::remove(photos / "inside");
    EXPECT_EQ(resolved(bookmark), photos);
    fs::rename(photos, root / "Pictures");
    EXPECT_EQ(resolved(bookmark), root.native() + "/Pictures (stale)");
    std::ofstream(photos).close();
    EXPECT_EQ(resolved(bookmark), root.native() + "/Pictures (stale)") << "a file took the old name";

    auto newer = bookmark;  // whose inode it was given
    newer.folder.birth.value().seconds -= 1;
    EXPECT_EQ(resolved(newer), "gone");

    fs::remove(photos);
    fs::create_directory(photos);
    EXPECT_EQ(resolved(bookmark), photos.native() + " (stale)") << "a new folder at the path comes first";
}

TEST_F(BookmarkedFolder, CannotBeToldFromANewerOneWithoutABirthTime) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto drive = root / "drive";
    fs::create_directory(drive);
    if (!makeImage(root / "image", "ext4", "-I 128")) GTEST_SKIP() << "no tools for ext4";
    const auto mount = TestMount::image(root / "image", drive);
    fs::create_directory(drive / "Photos");
    const auto bookmark = bookmarkOf(drive / "Photos");
    EXPECT_FALSE(bookmark.folder.birth);
    EXPECT_EQ(resolved(bookmark), drive / "Photos");
    fs::rename(drive / "Photos", drive / "Pictures");
    EXPECT_EQ(resolved(bookmark), "gone");
}

TEST_F(BookmarkedFolder, ReplacedByALinkToAnotherDriveIsGone) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto bookmark = bookmarkOf(photos);
    fs::create_directory(root / "memory");
    const auto memory = TestMount::memory(root / "memory");
    fs::remove_all(photos);
    fs::create_directory_symlink("memory", photos);
    EXPECT_EQ(resolved(bookmark), "gone");
}

}  // namespace
}  // namespace brindle
