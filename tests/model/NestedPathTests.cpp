#include "model/NestedPath.h"

#include <gtest/gtest.h>
#include <string>

namespace brindle {
namespace {

TEST(NestedPath, IsDecidedComponentByComponent) {
    constexpr const char* outside = nullptr;
    const struct {
        const char* path;
        const char* folder;
        const char* withCase;
        const char* ignoringCase;
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
    const auto shown = [](const std::optional<std::string_view>& rest) {
        return rest ? "“" + std::string(*rest) + "”" : "outside";
    };
    for (const auto& [path, folder, withCase, ignoringCase] : cases) {
        const auto expected = [&](const char* rest) {
            return shown(rest != nullptr ? std::optional<std::string_view>(rest) : std::nullopt);
        };
        EXPECT_EQ(shown(pathBelow(path, folder, true)), expected(withCase)) << path << " in " << folder;
        EXPECT_EQ(shown(pathBelow(path, folder, false)), expected(ignoringCase)) << path << " in " << folder;
    }
}

}  // namespace
}  // namespace brindle
