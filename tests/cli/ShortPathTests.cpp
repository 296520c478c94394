#include "cli/ShortPath.h"
#include "model/DisplayWidth.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(ShortPath, LosesItsHeadFirstAndTheMiddleOfItsNameLast) {
    const struct {
        std::size_t columns;
        const char* path;
        const char* shown;
    } cases[] = {
        {20, "Pictures/2025/a.jpg", "Pictures/2025/a.jpg"},
        {19, "Pictures/2025/a.jpg", "Pictures/2025/a.jpg"},
        {18, "Pictures/2025/a.jpg", "…/2025/a.jpg"},
        {12, "Pictures/2025/a.jpg", "…/2025/a.jpg"},
        {11, "Pictures/2025/a.jpg", "…/a.jpg"},
        {14, "Pictures/a very long name.jpg", "…/a very…e.jpg"},
        {9, "Pictures/a very long name.jpg", "a ve….jpg"},
        {10, "a very long name.jpg", "a ver….jpg"},
        {14, "写真/とても長い名前のファイル.jpg", "…/とても….jpg"},  // two columns each
        {6, "/srv/pictures", "pic…es"},
        {1, "abc", "…"},
        {0, "abc", ""},
    };
    for (const auto& [columns, path, shown] : cases) {
        EXPECT_EQ(shortPath(path, columns), shown) << columns;
        EXPECT_LE(displayWidth(shortPath(path, columns)), columns) << path;
    }
}

TEST(ShortPath, NeverTakesMoreColumnsThanThereAre) {
    const std::string path = "Größe/e\u0301\u0301tude/漢字/an ordinary name (12).tar.gz";
    for (std::size_t columns = 0; columns <= displayWidth(path) + 1; ++columns)
        EXPECT_LE(displayWidth(shortPath(path, columns)), columns);
}

}  // namespace
}  // namespace brindle
