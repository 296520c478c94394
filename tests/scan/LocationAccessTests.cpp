#include "platform/Bookmark.h"
#include "scan/LocationAccess.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using Reason = LocationChoiceError::Reason;
using Refusal = std::pair<std::optional<Reason>, std::string>;

LocationRecord recordFor(const fs::path& folder) {
    return makeCandidate(folder, {}, 1).record;
}

class LocationAccess : public testing::Test {
protected:
    LocationAccess() {
        fs::permissions(root, fs::perms(0755));
        fs::create_directory(photos);
    }

    const TempFolder temporary;
    const fs::path root = temporary.path();
    const fs::path photos = root / "Photos";
};

TEST_F(LocationAccess, ACandidateIsTheFolderAsItWasNamed) {
    const auto candidate = makeCandidate(root.native() + "//./other/../Photos/", {}, 12.5);
    const auto& record = candidate.record;
    EXPECT_THAT(record.id.rawValue,
                testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    EXPECT_NE(recordFor(photos).id, record.id);
    EXPECT_EQ(record.name, "Photos");
    EXPECT_EQ(record.path, photos);
    EXPECT_EQ(record.scanPath, photos);
    EXPECT_EQ(record.kind, LocationKind::folder);
    EXPECT_EQ(record.status, LocationStatus::active);
    EXPECT_EQ(record.addedAt, 12.5);
    EXPECT_FALSE(record.volumeID.empty());
    EXPECT_EQ(candidate.overlap, LocationOverlap{});
    EXPECT_EQ(resolveAccess(record), AccessState(AccessReady{photos, photos, {}}));

    EXPECT_EQ(makeCandidate(root, std::vector{record}, 1).overlap,
              (LocationOverlap{LocationOverlap::Kind::contains, {record.id}}));
    EXPECT_EQ(recordFor("/").name, recordFor("/").volumeName);
    EXPECT_FALSE(recordFor("/").name.empty());
}

TEST_F(LocationAccess, ALinkIsKeptAsItWasChosenAndWalkedWhereItLeads) {
    fs::create_directory_symlink("Photos", root / "link");
    const auto direct = recordFor(photos);
    const auto linked = makeCandidate(root / "link", std::vector{direct}, 1);
    EXPECT_EQ(linked.record.path, root / "link");
    EXPECT_EQ(linked.record.scanPath, photos);
    EXPECT_EQ(linked.overlap, (LocationOverlap{LocationOverlap::Kind::same, {direct.id}}));
    EXPECT_EQ(resolveAccess(linked.record), AccessState(AccessReady{root / "link", photos, {}}));
}

TEST_F(LocationAccess, APathRelativeToTheWorkingFolderIsMadeAbsolute) {
    const auto before = fs::current_path();
    fs::current_path(root);
    const auto path = recordFor("./Photos").path;
    fs::current_path(before);
    EXPECT_EQ(path, photos);
}

TEST_F(LocationAccess, WhatCannotBeIncludedIsRefusedInASentence) {
    std::ofstream(root / "file").close();
    auto mounts = MountTable::current().mounts();
    const auto server = root / "server";
    fs::create_directory(server);
    fs::create_directory_symlink(server, root / "link");
    mounts.push_back({.id = 1 << 30,
                      .parentID = MountTable::current().holding(root.native())->id,
                      .target = server,
                      .type = "cifs",
                      .source = "//server.example/share"});
    const MountTable withServer(mounts);

    const auto refusal = [&](const fs::path& path) -> Refusal {
        try {
            (void)makeCandidate(path, {}, 1, withServer);
            return {};
        } catch (const LocationChoiceError& error) {
            return {error.reason, error.what()};
        }
    };
    const Refusal notLocal{Reason::notLocal,
                           "Brindle can only check folders on drives connected to this computer."};
    EXPECT_EQ(refusal(server), notLocal);
    EXPECT_EQ(refusal(server / "not/there"), notLocal);
    EXPECT_EQ(refusal(root / "link"), notLocal);
    EXPECT_EQ(refusal("/nowhere\n"), Refusal(Reason::missing, "The folder “/nowhere\\n” isn't there."));
    EXPECT_EQ(refusal("/proc"),
              Refusal(Reason::pseudo, "“/proc” belongs to the system and holds no stored files."));
    EXPECT_EQ(refusal(root / "file").first, Reason::notAFolder);

    fs::permissions(photos, fs::perms::none);
    EXPECT_TRUE(holdsUnprivileged([&] { return refusal(photos).first == Reason::needsAccess; }));
    fs::permissions(photos, fs::perms::owner_all);
}

TEST_F(LocationAccess, ARenamedOrReplacedFolderIsReadyWithAFreshBookmark) {
    auto record = recordFor(photos);
    const auto pictures = root / "Pictures";
    const auto expectFoundAsPictures = [&] {
        const auto state = resolveAccess(record);
        ASSERT_TRUE(std::holds_alternative<AccessReady>(state));
        const auto& ready = std::get<AccessReady>(state);
        EXPECT_EQ(ready.path, pictures);
        EXPECT_EQ(ready.scanPath, pictures);
        ASSERT_TRUE(ready.refreshedBookmark);
        record.path = ready.path;
        record.bookmark = ready.refreshedBookmark;
        EXPECT_EQ(resolveAccess(record), AccessState(AccessReady{pictures, pictures, {}}));
    };
    fs::rename(photos, pictures);
    expectFoundAsPictures();
    fs::rename(pictures, root / "deleted");
    fs::create_directory(pictures);
    expectFoundAsPictures();
}

TEST_F(LocationAccess, WithoutAUsableBookmarkThePathCountsOnItsVolume) {
    for (const auto& bookmark : {std::optional<Bytes>(), std::optional(Bytes(40, std::byte{0x5a}))}) {
        auto record = recordFor(photos);
        const auto fresh = record.bookmark;
        record.bookmark = bookmark;
        EXPECT_EQ(resolveAccess(record), AccessState(AccessReady{photos, photos, fresh}));
        auto elsewhere = record;
        elsewhere.volumeID = "another";
        EXPECT_EQ(resolveAccess(elsewhere), AccessState(AccessDisconnected{}));
        elsewhere.volumeID.clear();
        EXPECT_EQ(resolveAccess(elsewhere), AccessState(AccessDisconnected{}));
        record.path = root / "absent";
        EXPECT_EQ(resolveAccess(record), AccessState(AccessDisconnected{}));
    }
}

TEST_F(LocationAccess, AFolderThatIsThereAndRefusedNeedsAccess) {
    auto record = recordFor(photos);
    fs::create_directory(root / "closed");
    fs::create_directory(root / "closed/inner");
    const auto inner = recordFor(root / "closed/inner");
    fs::permissions(photos, fs::perms(0300));
    fs::permissions(root / "closed", fs::perms(0600));
    const auto needsAccess = [](const LocationRecord& of) {
        return resolveAccess(of) == AccessState(AccessNeeded{});
    };
    EXPECT_TRUE(holdsUnprivileged([&] { return needsAccess(record); }));
    EXPECT_TRUE(holdsUnprivileged([&] { return needsAccess(inner); }));
    record.bookmark.reset();
    EXPECT_TRUE(holdsUnprivileged([&] { return needsAccess(record); }));
    record.volumeID = "another";
    EXPECT_TRUE(
        holdsUnprivileged([&] { return resolveAccess(record) == AccessState(AccessDisconnected{}); }));
    fs::permissions(photos, fs::perms::owner_all);
    fs::permissions(root / "closed", fs::perms::owner_all);
}

TEST_F(LocationAccess, NothingOnADriveThatIsAwayIsEverReady) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto image = root / "image";
    const auto drive = root / "drive";
    const auto elsewhere = root / "elsewhere";
    fs::create_directories(drive / "Photos");
    fs::create_directory(elsewhere);
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "no tools for ext4";

    auto mount = TestMount::image(image, drive);
    fs::create_directory(drive / "Photos");
    auto withoutBookmark = recordFor(drive / "Photos");
    withoutBookmark.bookmark.reset();
    const auto drives = mountedDrives({}, MountTable::current());
    const auto info = std::ranges::find(drives, drive.native(), &DriveInfo::mountPath);
    ASSERT_NE(info, drives.end());
    const auto whole = makeDriveCandidate(*info, {}, 1).record;
    EXPECT_EQ(whole.kind, LocationKind::volume);
    EXPECT_EQ(whole.path, drive);
    EXPECT_EQ(whole.volumeID, recordFor(drive).volumeID);

    const std::vector records{recordFor(drive), recordFor(drive / "Photos"), withoutBookmark, whole};
    const auto expectAllDisconnected = [&](const char* when) {
        for (const auto& record : records)
            EXPECT_EQ(resolveAccess(record), AccessState(AccessDisconnected{})) << record.path << " " << when;
    };
    for (const auto& record : records)
        EXPECT_TRUE(std::holds_alternative<AccessReady>(resolveAccess(record))) << record.path;

    mount.unmount();
    expectAllDisconnected("with the empty mount point in its place");
    {
        const auto other = TestMount::memory(drive);
        fs::create_directory(drive / "Photos");
        expectAllDisconnected("with another drive in its place");
    }
    fs::remove_all(drive);
    expectAllDisconnected("without its mount point");

    const auto moved = TestMount::image(image, elsewhere);
    EXPECT_EQ(resolveAccess(whole), AccessState(AccessReady{elsewhere, elsewhere, {}}));
    EXPECT_EQ(resolveAccess(records[1]), AccessState(AccessDisconnected{}));
}

}  // namespace
}  // namespace brindle
