#include "platform/OutputFile.h"
#include "support/ChildProcess.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

int modeOf(const fs::path& path) {
    return static_cast<int>(fs::status(path).permissions());
}

void write(const fs::path& destination, std::string_view contents) {
    const auto file = openOutputFile(destination);
    file->write(contents);
    file->finish();
}

/// The error of opening, writing or finishing; 0 when all of it works.
int errorOfWriting(const fs::path& destination, std::string_view contents = "new") {
    try {
        write(destination, contents);
        return 0;
    } catch (const std::system_error& error) {
        return error.code().value();
    }
}

/// What a writer leaves behind that is killed on the way.
void writeAndDie(const fs::path& destination) {
    const int status = inChildProcess([&] {
        const auto file = openOutputFile(destination);
        file->write("half");
        raise(SIGKILL);
    });
    ASSERT_TRUE(WIFSIGNALED(status));
}

class OutputFileTest : public testing::Test {
protected:
    TempFolder temporary;
    fs::path folder = temporary.path();
    fs::path destination = folder / "a.csv";
};

TEST_F(OutputFileTest, TakesTheNameOnlyWhenItIsWhole) {
    std::ofstream(destination) << "old";
    const auto file = openOutputFile(destination);
    file->write("new ");
    EXPECT_THAT(namesIn(folder),
                ElementsAre(MatchesRegex("\\.a\\.csv\\.[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.partial"),
                            "a.csv"));
    EXPECT_EQ(contentsOf(destination), "old");
    file->write(std::string(20 << 20, 'x'));
    file->finish();
    EXPECT_EQ(contentsOf(destination), "new " + std::string(20 << 20, 'x'));
    EXPECT_THAT(namesIn(folder), ElementsAre("a.csv"));
}

TEST_F(OutputFileTest, DiscardedOrGivenUpLeavesEverythingAsItWas) {
    std::ofstream(destination) << "old";
    const auto discarded = openOutputFile(destination);
    discarded->write("new");
    discarded->discard();
    openOutputFile(folder / "other.csv")->write("new");
    EXPECT_THAT(namesIn(folder), ElementsAre("a.csv"));
    EXPECT_EQ(contentsOf(destination), "old");
}

TEST_F(OutputFileTest, AFileHandsItsPermissionsOnAndANewOneIsOrdinary) {
    const mode_t umask = ::umask(027);
    write(destination, "1");
    ::umask(umask);
    EXPECT_EQ(modeOf(destination), 0640);
    fs::permissions(destination, fs::perms(0604));
    write(destination, "2");
    EXPECT_EQ(modeOf(destination), 0604);
    if (::geteuid() != 0) return;
    ASSERT_EQ(::chown(destination.c_str(), 1234, 5678), 0);
    write(destination, "3");
    struct stat status {};
    ASSERT_EQ(::stat(destination.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 5678U);
}

TEST_F(OutputFileTest, ALinkStaysAndItsFileIsReplacedAlsoWhenItIsNotThereYet) {
    fs::create_directory(folder / "inner");
    fs::create_symlink("inner/real.csv", destination);
    for (const auto* contents : {"first", "second"}) {
        write(destination, contents);
        EXPECT_TRUE(fs::is_symlink(destination));
        EXPECT_EQ(contentsOf(folder / "inner/real.csv"), contents);
        EXPECT_THAT(namesIn(folder / "inner"), ElementsAre("real.csv"));
    }
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(errorOfWriting(folder / "loop"), ELOOP);
}

TEST_F(OutputFileTest, WhatIsNoFileIsNeverReplaced) {
    fs::create_directory(folder / "folder");
    EXPECT_EQ(errorOfWriting(folder / "folder"), EISDIR);
    EXPECT_EQ(errorOfWriting("/dev/null"), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(errorOfWriting("/dev/full"), ENOSPC);
    EXPECT_THAT(namesIn(folder), ElementsAre("folder"));
}

TEST_F(OutputFileTest, ALongNameIsShortenedOnTheWay) {
    std::string name;
    while (name.size() < 250) name += "\u00e9";
    name += ".csv";
    ASSERT_GT(name.size(), 250U);
    writeAndDie(folder / name);
    write(folder / name, "new");
    EXPECT_THAT(namesIn(folder), ElementsAre(name));
    EXPECT_EQ(errorOfWriting(folder / (name + name)), ENAMETOOLONG);
}

TEST_F(OutputFileTest, WhatAKilledWriterLeftIsRemovedAndNothingElse) {
    writeAndDie(destination);
    writeAndDie(folder / "other.csv");
    const std::vector<std::string> others = {".a.csv.1234.partial",
                                             ".a.csv.0000000g-0000-4000-8000-000000000000.partial",
                                             ".a.csv.00000000-0000-4000-8000-000000000000.partial2"};
    for (const auto& name : others) std::ofstream(folder / name) << "mine";
    fs::create_directory(folder / ".a.csv.00000000-0000-4000-8000-000000000000.partial");
    ASSERT_EQ(namesIn(folder).size(), others.size() + 3);

    const auto running = openOutputFile(destination);
    running->write("running");
    write(destination, "quick");  // meanwhile
    EXPECT_EQ(namesIn(folder).size(), others.size() + 4)
        << "the destination, the other's leftover, and the one that is being written";
    EXPECT_EQ(contentsOf(destination), "quick");
    running->finish();
    EXPECT_EQ(contentsOf(destination), "running");
    write(folder / "other.csv", "");
    EXPECT_EQ(namesIn(folder).size(), others.size() + 3);
}

TEST_F(OutputFileTest, AFullDiskLeavesTheOldFile) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto mount = TestMount::memory(folder, "size=64k");
    std::ofstream(destination) << "old";
    EXPECT_EQ(errorOfWriting(destination, std::string(100'000, 'x')), ENOSPC);
    EXPECT_THAT(namesIn(folder), ElementsAre("a.csv"));
    EXPECT_EQ(contentsOf(destination), "old");
}

TEST_F(OutputFileTest, AFolderThatGoesOrIsMovedMeanwhileGetsNothing) {
    const fs::path inner = folder / "inner";
    fs::create_directory(inner);
    auto file = openOutputFile(inner / "a.csv");
    file->write("new");
    fs::remove_all(inner);
    EXPECT_THROW(file->finish(), std::system_error);

    fs::create_directory(inner);
    file = openOutputFile(inner / "a.csv");
    file->write("new");
    fs::rename(inner, folder / "moved");
    EXPECT_THROW(file->finish(), std::system_error);
    file->discard();
    EXPECT_THAT(namesIn(folder / "moved"), IsEmpty());
}

TEST_F(OutputFileTest, WhatMayNotBeWrittenIsRefusedAtOnce) {
    std::ofstream(destination) << "mine";
    fs::permissions(folder, fs::perms(0755));
    fs::create_directory(folder / "open");
    fs::permissions(folder / "open", fs::perms(0777));
    std::ofstream(folder / "open/protected.csv") << "mine";
    EXPECT_TRUE(holdsUnprivileged([&] {
        return errorOfWriting(folder / "new.csv") == EACCES && errorOfWriting(destination) == EACCES &&
               errorOfWriting(folder / "open/protected.csv") == EACCES &&
               errorOfWriting(folder / "open/new.csv") == 0;
    }));
    EXPECT_THAT(namesIn(folder / "open"), ElementsAre("new.csv", "protected.csv"));
    EXPECT_EQ(errorOfWriting(folder / "absent/a.csv"), ENOENT);
}

}  // namespace
}  // namespace brindle
