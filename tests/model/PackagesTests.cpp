#include "model/Packages.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(Packages, AreToldByTheLastExtensionIgnoringCase) {
    for (const auto* package :
         {"Photos.photoslibrary", "Project.XCODEPROJ", "a.b.App", ".hidden.app", "x.key"})
        EXPECT_TRUE(isPackage(package)) << package;
    for (const auto* folder : {"", "app", ".app", "notes.txt", "x.app.old", "x.apps", "x.", "x.ap\xc4\xb1"})
        EXPECT_FALSE(isPackage(folder)) << folder;
}

struct ContributorCase {
    const char* folder;
    const char* contributor;
    std::size_t components;  // how many of the folder's components it keeps
};

class Contributor : public testing::TestWithParam<ContributorCase> {};

TEST_P(Contributor, IsAtMostTwoFoldersDeepAndNeverInsideAPackage) {
    const auto& [folder, expected, components] = GetParam();
    EXPECT_EQ(contributor(folder), expected);

    std::vector<std::string> parts;
    for (std::string_view rest = folder; !rest.empty();) {
        const auto slash = rest.find('/');
        parts.emplace_back(rest.substr(0, slash));
        rest = slash == std::string_view::npos ? "" : rest.substr(slash + 1);
    }
    EXPECT_EQ(creditedDepth(parts, 2), components);
}

INSTANTIATE_TEST_SUITE_P(Packages, Contributor,
                         testing::Values(ContributorCase{"", "", 0},
                                         ContributorCase{"Projects", "Projects", 1},
                                         ContributorCase{"Projects/App/src", "Projects/App", 2},
                                         ContributorCase{"Foo.app/Contents", "Foo.app", 1},
                                         ContributorCase{"Apps/Foo.app/Contents/x", "Apps/Foo.app", 2},
                                         ContributorCase{"a/b/Foo.app/x", "a/b", 2},
                                         ContributorCase{".app/b/c", ".app/b", 2}));

}  // namespace
}  // namespace brindle
