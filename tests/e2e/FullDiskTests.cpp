#include "e2e/Records.h"
#include "support/TestMounts.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

void fill(const fs::path& folder) {
    for (const std::size_t piece : {65536U, 4096U, 1U}) {
        std::ofstream filler(folder / ("filler" + std::to_string(piece)));
        while (filler << std::string(piece, 'x') << std::flush) {
        }
    }
}

class FullDiskHistory : public testing::Test {
protected:
    void SetUp() override {
        SKIP_UNLESS_MOUNTS_WORK();
        writeMany(100);
    }
    void writeMany(int count) const {
        for (int i = 0; i < count; ++i) writeFile(tree / std::string(100, 'f') / std::to_string(i), 10);
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(FullDiskHistory, IsToldInASentenceAndTheNextCheckRecordsEverything) {
    const fs::path image = folder.path() / "image";
    fs::create_directory(brindle.dataDirectory());
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "there is no mkfs.ext4";
    const auto disk = TestMount::image(image, brindle.dataDirectory());
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    const auto before = Records(brindle).everything();

    writeMany(3000);
    fill(brindle.dataDirectory());
    for (const char* command : {"check", "watch"}) {
        const auto result = brindle.run({command});
        EXPECT_NE(result.exitCode, 0);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error,
                    HasSubstr("There is no room left on the disk for the storage history in “"));
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << result.error;
        EXPECT_EQ(Records(brindle).everything(), before);
    }
    for (const auto& filler : {"filler65536", "filler4096", "filler1"})
        fs::remove(brindle.dataDirectory() / filler);
    ASSERT_EQ(brindle.run({"check"}).exitCode, 0);
    EXPECT_EQ(Records(brindle).inventory(), listingOf(tree));
}

TEST_F(FullDiskHistory, IsNotThatOfTheTemporaryFolder) {
    const fs::path temporary = folder.path() / "temporary";
    fs::create_directory(temporary);
    const auto full = TestMount::memory(temporary, "size=64k");
    fill(temporary);
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    writeMany(20'000);  // more than is compared in memory
    ProgramLaunch launch = brindle.launch({"check"});
    for (const char* variable : {"TMPDIR", "SQLITE_TMPDIR", "TMP"})
        launch.setVariable(variable, temporary.native());
    const auto result = runProgram(launch);
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(Records(brindle).inventory(), listingOf(tree));
}

}  // namespace
}  // namespace brindle
