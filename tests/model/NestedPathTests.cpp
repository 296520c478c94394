#include "model/NestedPath.h"

#include <gtest/gtest.h>
#include <optional>
#include <string_view>

namespace brindle {
namespace {

TEST(NestedPath, IsDecidedComponentByComponent) {
    using Rest = std::optional<std::string_view>;
    const Rest outside;
    const struct {
        const char* path;
        const char* folder;
        Rest withCase;
        Rest ignoringCase;
    } cases[] = {
        {"/home/ann", "/home/ann", "", ""},
        {"/home/ann/x/Y", "/home/ann", "x/Y", "x/Y"},
        {"/home/ann", "/home/ann/x", outside, outside},
        {"/srv/anna", "/srv/ann", outside, outside},
        {"/home", "/", "home", "home"},
        {"/", "/", "", ""},
        {"/", "/home", outside, outside},
        {"/HOME/Ann/x", "/home/ann", outside, "x"},
        {"/ÉTÉ/È", "/été", outside, "È"},
        {"/Straße/x", "/STRASSE", outside, "x"},
        {"/\xff/x", "/\xff", "x", "x"},
        {"/\xff", "/\xfe", outside, outside},  // no text, and so never one name
        {"/\xff", "/\xef\xbf\xbd", outside, outside},
        {"/A\xff", "/a\xff", outside, outside},
    };
    for (const auto& [path, folder, withCase, ignoringCase] : cases) {
        EXPECT_EQ(pathBelow(path, folder, true), withCase) << path << " in " << folder;
        EXPECT_EQ(pathBelow(path, folder, false), ignoringCase) << path << " in " << folder;
    }
}

}  // namespace
}  // namespace brindle
