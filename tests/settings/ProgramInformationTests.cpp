#include "settings/ProgramInformation.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(ProgramInformation, IsReadOrEmpty) {
    const TempFolder folder;
    const std::string path = folder.path() / "share/brindle/brindle-info.json";
    EXPECT_EQ(informationFile(folder.path() / "bin/brindle-desktop"), path);
    EXPECT_EQ(readInformation(path).text("SUFeedURL"), std::nullopt);
    std::filesystem::create_directories(folder.path() / "share/brindle");
    for (const char* damaged : {"", "{", "[1]", R"({"SUFeedURL": 1})"}) {
        std::ofstream(path) << damaged;
        EXPECT_EQ(readInformation(path).text("SUFeedURL"), std::nullopt) << damaged;
    }
    std::ofstream(path) << R"({"SUFeedURL": "https://localhost"})";
    EXPECT_EQ(readInformation(path).text("SUFeedURL"), "https://localhost");
}

}  // namespace
}  // namespace brindle
