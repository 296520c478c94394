#include "model/Packages.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace brindle {
namespace {

TEST(Packages, AreToldByTheLastExtensionIgnoringCase) {
    for (const auto* package :
         {"Photos.photoslibrary", "Project.XCODEPROJ", "a.b.App", ".hidden.app", "x.key"})
        EXPECT_TRUE(isPackage(package)) << package;
    for (const auto* folder : {"", "app", ".app", "notes.txt", "x.app.old", "x.apps", "x.", "x.ap\xc4\xb1"})
        EXPECT_FALSE(isPackage(folder)) << folder;
}

TEST(Packages, AContributorIsAtMostTwoFoldersDeepAndNeverInsideAPackage) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, ""},
        {{"Projects"}, "Projects"},
        {{"Projects", "App", "src"}, "Projects/App"},
        {{"Foo.app", "Contents"}, "Foo.app"},
        {{"Apps", "Foo.app", "Contents", "x"}, "Apps/Foo.app"},
        {{"a", "b", "Foo.app", "x"}, "a/b"},
        {{".app", "b", "c"}, ".app/b"},
    };
    for (const auto& [folder, expected] : cases) {
        EXPECT_EQ(contributor(fmt::format("{}", fmt::join(folder, "/"))), expected);
        const std::span credited(folder.data(), creditedDepth(folder, 2));
        EXPECT_EQ(fmt::format("{}", fmt::join(credited, "/")), expected);
    }
}

}  // namespace
}  // namespace brindle
