#include "platform/Paths.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>

namespace brindle {
namespace {

TEST(Paths, AreStandardisedFromTheTextAlone) {
    const std::pair<const char*, const char*> cases[] = {
        {"/home//ann///", "/home/ann"},
        {"//", "/"},
        {"/./home/./ann/.", "/home/ann"},
        {"/home/bob/../ann", "/home/ann"},
        {"/../../home", "/home"},
        {"/home/..", "/"},
        {"./notes/", "/srv/notes"},
        {"..", "/"},
        {"", "/srv"},
        {"/home/..ann/.../.b", "/home/..ann/.../.b"},
        {"/home/\xff\n", "/home/\xff\n"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(standardizedPath(text, "/srv/"), expected) << text;
    EXPECT_EQ(standardizedPath("x"), std::filesystem::current_path() / "x");
}

TEST(Paths, HaveParentsAndChildrenAtTheRootToo) {
    EXPECT_EQ(parentPath("/home/ann"), "/home");
    EXPECT_EQ(parentPath("/home"), "/");
    EXPECT_EQ(parentPath("/"), "/");
    EXPECT_EQ(lastComponent("/"), "");
    EXPECT_EQ(joinedPath("/", "home"), "/home");
    EXPECT_TRUE(isAtOrBelow("/home/ann", "/home/ann"));
    EXPECT_TRUE(isAtOrBelow("/home", "/"));
    EXPECT_FALSE(isAtOrBelow("/srv/anna", "/srv/ann"));
    EXPECT_FALSE(isAtOrBelow("/home", "/home/ann"));
}

TEST(Paths, TheDataHomeIsTheUsersChoiceOnlyWhenItIsAbsolute) {
    EXPECT_EQ(dataHome("/data//ann/", "/home/ann"), "/data/ann");
    EXPECT_EQ(configHome("/settings//ann/", "/home/ann"), "/settings/ann");
    for (const std::optional<std::string>& value : {std::optional<std::string>(), {""}, {"data"}}) {
        EXPECT_EQ(dataHome(value, "/home/ann"), "/home/ann/.local/share");
        EXPECT_EQ(configHome(value, "/home/ann"), "/home/ann/.config");
    }
}

TEST(Paths, TheRunningProgramIsFound) {
    EXPECT_EQ(lastComponent(programFile()), "platform_tests");
}

}  // namespace
}  // namespace brindle
