#include "scan/Overlap.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace brindle {
namespace {

using Kind = LocationOverlap::Kind;

LocationRecord location(const std::string& path, bool caseSensitive = true,
                        const std::string& volumeID = "v") {
    return {.id = {path},
            .name = path.substr(path.rfind('/') + 1),
            .path = path,
            .scanPath = path,
            .volumeID = volumeID,
            .caseSensitive = caseSensitive};
}

TEST(Overlap, TheNewFolderMeetsEveryLocationThatIsTracked) {
    auto removed = location("/home/ann/Old");
    removed.removedAt = 1;
    const std::vector existing{location("/srv"), location("/srv/photos"), location("/srv/photos/raw"),
                               location("/media/STICK/DCIM", false), removed};
    const struct {
        LocationRecord added;
        LocationOverlap expected;
    } cases[] = {
        {location("/srv/photos"), {Kind::same, {{"/srv/photos"}}}},
        {location("/srv/photos/2020"), {Kind::inside, {{"/srv/photos"}}}},  // the innermost
        {location("/srv/phot"), {Kind::inside, {{"/srv"}}}},
        {location("/media"), {Kind::contains, {{"/media/STICK/DCIM"}}}},
        {location("/"),
         {Kind::contains, {{"/srv"}, {"/srv/photos"}, {"/srv/photos/raw"}, {"/media/STICK/DCIM"}}}},
        {location("/home/ann/Old"), {}},
        {location("/home/ann"), {}},
        {location("/SRV"), {}},
        {location("/media/stick/dcim", false), {Kind::same, {{"/media/STICK/DCIM"}}}},
        {location("/media/stick/dcim", true), {}},
        {location("/media/stick/dcim", false, "another"), {}},
        {location("/srv/photos/stick", true, "another"), {}},  // mounted there: no walk of /srv sees it
        {location("/", true, "another"), {}},
    };
    for (const auto& [added, expected] : cases)
        EXPECT_EQ(findOverlap(added, existing), expected) << added.path;
}

TEST(Overlap, IsToldInASentence) {
    const auto text = [](const char* path, const std::vector<LocationRecord>& existing) {
        const auto added = location(path);
        return overlapText(findOverlap(added, existing), added, existing);
    };
    const auto photos = location("/srv/Photos");
    const auto music = location("/srv/Mu\x1bsic");
    EXPECT_EQ(text("/srv/Photos", {photos}), "“Photos” is already included.");
    EXPECT_EQ(text("/srv/Photos/Raw", {photos}), "“Raw” is already checked as part of “Photos”.");
    EXPECT_EQ(
        text("/srv", {photos, music}),
        "“srv” contains 2 locations, which Brindle already checks. Each keeps being checked on its own, "
        "and saved history remains.");
    EXPECT_EQ(
        text("/srv", {music}),
        "“srv” contains “Mu\\x1bsic”, which Brindle already checks. “Mu\\x1bsic” keeps being checked on "
        "its own, and saved history remains.");
    EXPECT_EQ(text("/home", {photos}), std::nullopt);
}

}  // namespace
}  // namespace brindle
