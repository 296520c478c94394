#include "platform/Bookmark.h"
#include "scan/LocationAccess.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using ChoiceReason = LocationChoiceError::Reason;
using Refusal = std::pair<std::optional<ChoiceReason>, std::string>;

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

TEST_F(LocationAccess, ACandidateIsTheFolderAsItWasNamedWalkedWhereItLeads) {
    const auto candidate = makeCandidate(root.native() + "//./other/../Photos/", {}, 12.5);
    const auto& record = candidate.record;
    EXPECT_NE(recordFor(photos).id, record.id);
    EXPECT_EQ(record.name, "Photos");
    EXPECT_EQ(record.path, photos);
    EXPECT_EQ(record.scanPath, photos);
    EXPECT_EQ(candidate.overlap, LocationOverlap{});
    EXPECT_EQ(resolveAccess(record), AccessState(AccessReady{photos, photos, {}}));
    EXPECT_EQ(recordFor("/").name, recordFor("/").volumeName);

    fs::create_directory_symlink("Photos", root / "link");
    const auto linked = makeCandidate(root / "link", std::vector{record}, 1);
    EXPECT_EQ(linked.record.path, root / "link");
    EXPECT_EQ(linked.record.scanPath, photos);
    EXPECT_EQ(linked.overlap, (LocationOverlap{LocationOverlap::Kind::same, {record.id}}));
    EXPECT_EQ(resolveAccess(linked.record), AccessState(AccessReady{root / "link", photos, {}}));
}

TEST_F(LocationAccess, WhatCannotBeIncludedIsRefusedInASentence) {
    std::ofstream(root / "file").close();
    const auto refusal = [](const fs::path& path) -> Refusal {
        try {
            (void)makeCandidate(path, {}, 1);
            return {};
        } catch (const LocationChoiceError& error) {
            return {error.reason, error.what()};
        }
    };
    EXPECT_EQ(refusal("/nowhere\n"), Refusal(ChoiceReason::missing, "The folder “/nowhere\\n” isn't there."));
    EXPECT_EQ(refusal("/proc"),
              Refusal(ChoiceReason::pseudo, "“/proc” belongs to the system and holds no stored files."));
    EXPECT_EQ(refusal(root / "file").first, ChoiceReason::notAFolder);
    fs::permissions(photos, fs::perms::none);
    EXPECT_TRUE(holdsUnprivileged([&] { return refusal(photos).first == ChoiceReason::needsAccess; }));
}

TEST_F(LocationAccess, ARenamedFolderIsReadyWithAFreshBookmark) {
    auto record = recordFor(photos);
    const auto pictures = root / "Pictures";
    fs::rename(photos, pictures);
    const auto state = resolveAccess(record);
    ASSERT_TRUE(std::holds_alternative<AccessReady>(state));
    record.bookmark = std::get<AccessReady>(state).refreshedBookmark;
    EXPECT_EQ(state, AccessState(AccessReady{pictures, pictures, record.bookmark}));
    EXPECT_EQ(resolveAccess(record), AccessState(AccessReady{pictures, pictures, {}}));
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
    fs::create_directories(root / "closed/inner");
    auto record = recordFor(photos);
    const auto inner = recordFor(root / "closed/inner");
    fs::permissions(photos, fs::perms(0300));
    fs::permissions(root / "closed", fs::perms(0600));
    const auto accessIs = [](const LocationRecord& of, const AccessState& expected) {
        return holdsUnprivileged([&] { return resolveAccess(of) == expected; });
    };
    EXPECT_TRUE(accessIs(record, AccessNeeded{}));
    EXPECT_TRUE(accessIs(inner, AccessNeeded{}));
    fs::rename(photos, root / "Pictures");
    EXPECT_TRUE(accessIs(record, AccessNeeded{})) << "found by its bookmark";
    fs::rename(root / "Pictures", photos);
    record.bookmark.reset();
    EXPECT_TRUE(accessIs(record, AccessNeeded{}));
    record.volumeID = "another";
    EXPECT_TRUE(accessIs(record, AccessDisconnected{}));
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
    const auto whole = makeFolderOrDriveCandidate(drive, {}, 1).record;
    EXPECT_EQ(whole.kind, LocationKind::volume);
    EXPECT_EQ(whole.path, drive);

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
