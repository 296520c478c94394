#include "e2e/Records.h"
#include "support/TestMounts.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <sys/mount.h>
#include <thread>
#include <tuple>
#include <unistd.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// A location that was checked and is then out of sight, in part or as a whole.
class NothingIsMassRemoval : public testing::Test {
protected:
    NothingIsMassRemoval() {
        openToAll(folder.path());
        fs::create_directory(place);
    }

    static void writeSomeFiles(const fs::path& tree) {
        writeFile(tree / "a", 10);
        writeFile(tree / "inner/b", 20'000);
        writeFile(tree / "inner/deeper/c", 30);
    }

    /// Two checks with something recorded between them, as there would be.
    void checkTwice() {
        ASSERT_EQ(brindle.run({"check", place}).exitCode, 0);
        if (std::ofstream grown(place / "a", std::ios::app); grown) grown << "grown";
        ASSERT_EQ(brindle.run({"check"}).exitCode, 0);
        counted = Records(brindle).whatWasCounted();
    }

    void expectNotChecked(const std::string& outcome) const {
        const auto report = brindle.json({"check"}, 4);
        EXPECT_EQ(report["locations"][0]["outcome"], outcome);
        const Records records(brindle);
        EXPECT_EQ(records.whatWasCounted(), counted);
        EXPECT_EQ(records.value("SELECT status FROM locations"), outcome);
    }

    /// A check that saw all but what lies in or at `hidden`.
    void expectUnreadable(const std::string& hidden, bool isPermission) const {
        const Records before(brindle);
        const auto report = brindle.json({"check"});
        EXPECT_EQ(report["locations"][0]["unreadableFolders"],
                  nlohmann::json({{{"path", hidden}, {"isPermission", isPermission}}}));
        expectNoNews(report, before);
    }

    void expectBack() const {
        const Records before(brindle);
        expectNoNews(brindle.json({"check"}), before);
        const Records after(brindle);
        EXPECT_EQ(after.inventory(), listingOf(place));
        EXPECT_EQ(after.value("SELECT status FROM locations"), "active");
    }

    void expectNoNews(const nlohmann::json& report, const Records& before) const {
        EXPECT_EQ(report["locations"][0]["totals"],
                  nlohmann::json({{"added", 0}, {"freed", 0}, {"count", 0}}));
        const Records after(brindle);
        EXPECT_EQ(after.inventory(), before.inventory());
        for (const std::string table : {"observations", "daily_totals", "tracked_totals"})
            EXPECT_EQ(after.rows("SELECT * FROM " + table), before.rows("SELECT * FROM " + table));
    }

    TempFolder folder;
    fs::path place = folder.path() / "place";
    Brindle brindle;
    std::vector<std::string> counted;
};

TEST_F(NothingIsMassRemoval, AnUnmountedDriveIsAway) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = folder.path() / "image";
    const fs::path otherImage = folder.path() / "other image";
    if (!makeImage(image, "ext4") || !makeImage(otherImage, "ext4")) GTEST_SKIP() << "there is no mkfs.ext4";
    std::optional drive(TestMount::image(image, place));
    writeSomeFiles(place);
    checkTwice();
    drive->unmount();
    expectNotChecked("disconnected");
    writeFile(place / "left under the mount point", 5);
    expectNotChecked("disconnected");
    drive.emplace(TestMount::image(otherImage, place));
    expectNotChecked("disconnected");
    drive->unmount();
    drive.emplace(TestMount::image(image, place));
    expectBack();
}

/// Whether what is mounted lies on another file system than the mount point, and where the location is in it.
class AMountPoint : public NothingIsMassRemoval,
                    public testing::WithParamInterface<std::tuple<bool, std::string>> {};

TEST_P(AMountPoint, WithNothingMountedIsNotTheFolderThatWasThere) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto& [isOtherFileSystem, below] = GetParam();
    const fs::path drive = folder.path() / "drive";
    const fs::path point = folder.path() / "point";
    fs::create_directory(drive);
    fs::create_directory(point);
    std::optional<TestMount> memory;
    if (isOtherFileSystem) memory.emplace(TestMount::memory(drive));
    std::optional bound(TestMount::bind(drive, point));
    place = point / below;
    writeSomeFiles(place);
    checkTwice();
    bound.reset();
    expectNotChecked("disconnected");
    writeFile(place / "left under the mount point", 7);
    expectNotChecked("disconnected");
    bound.emplace(TestMount::bind(drive, point));
    expectBack();
}

INSTANTIATE_TEST_SUITE_P(OnAnyDrive, AMountPoint,
                         testing::Combine(testing::Bool(),
                                          testing::Values(std::string(), std::string("folder"))));

TEST_F(NothingIsMassRemoval, AnotherFileSystemMountedOverItHidesIt) {
    SKIP_UNLESS_MOUNTS_WORK();
    writeSomeFiles(place);
    checkTwice();
    auto over = TestMount::memory(place);
    expectNotChecked("disconnected");
    writeFile(place / "a", 5);
    expectNotChecked("disconnected");
    over.unmount();
    expectBack();
}

TEST_F(NothingIsMassRemoval, ARootMovedElsewhereIsGone) {
    writeSomeFiles(place);
    checkTwice();
    fs::create_directory(folder.path() / "elsewhere");
    fs::rename(place, folder.path() / "elsewhere/moved");
    expectNotChecked("disconnected");
    std::ofstream(place) << "a file in place of the folder";
    expectNotChecked("disconnected");
    fs::remove(place);
    fs::rename(folder.path() / "elsewhere/moved", place);
    expectBack();
}

TEST_F(NothingIsMassRemoval, ARefusedRootNeedsAccess) {
    if (!brindle.giveUpRoot()) GTEST_SKIP() << "the program cannot be started without rights";
    writeSomeFiles(place);
    checkTwice();
    fs::permissions(place, fs::perms::none);
    expectNotChecked("needsAccess");
    fs::permissions(place, fs::perms(0311));
    expectNotChecked("needsAccess");
    fs::permissions(place, fs::perms(0755));
    fs::permissions(folder.path(), fs::perms(0700));
    expectNotChecked("needsAccess");
    openToAll(folder.path());
    expectBack();
}

TEST_F(NothingIsMassRemoval, ARefusedFolderInsideIsToldAndKept) {
    if (!brindle.giveUpRoot()) GTEST_SKIP() << "the program cannot be started without rights";
    writeSomeFiles(place);
    checkTwice();
    fs::permissions(place / "inner", fs::perms::none);
    expectUnreadable("inner", true);
    expectUnreadable("inner", true);
    fs::permissions(place / "inner", fs::perms(0755));
    expectBack();
}

/// A disk with faults, in user space.
class AFailingDisk : public NothingIsMassRemoval {
protected:
    void SetUp() override {
        if (!enterOwnMountTable()) GTEST_SKIP() << "mounting is not allowed here";
        if (std::string_view(BRINDLE_BROKEN_FILE_SYSTEM).empty()) GTEST_SKIP() << "built without libfuse3";
        if (!start()) GTEST_SKIP() << "a file system in user space cannot be mounted here";
        checkTwice();
    }
    void TearDown() override { stop(); }

    bool start() {
        server = std::make_unique<RunningProgram>(
            ProgramLaunch{.arguments = {BRINDLE_BROKEN_FILE_SYSTEM, faultFile(), place}, .environment = {}});
        while (!fs::exists(place / "deep")) {
            if (!server->isRunning()) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }
    void stop() {
        if (!server) return;
        ::umount2(place.c_str(), MNT_DETACH);
        server.reset();
    }

    [[nodiscard]] fs::path faultFile() const { return folder.path() / "fault"; }
    void breakPart(const std::string& part) const { std::ofstream(faultFile()) << part; }

    std::unique_ptr<RunningProgram> server;
};

TEST_F(AFailingDisk, IsToldAndWhatItHidesIsKept) {
    const struct {
        const char* part;
        const char* hidden;
    } cases[] = {{"open", "deep"}, {"list", "deep"}, {"status", "deep/750"}};
    for (const auto& [part, hidden] : cases) {
        SCOPED_TRACE(part);
        breakPart(part);
        expectUnreadable(hidden, false);
        breakPart("nothing");
        expectBack();
    }
}

TEST_F(AFailingDisk, WhoseRootCannotBeListedIsNotChecked) {
    breakPart("root");
    expectNotChecked("disconnected");
    breakPart("nothing");
    expectBack();
}

TEST_F(AFailingDisk, WhoseServerDiedIsNotChecked) {
    server->signal(SIGKILL);
    (void)server->wait();
    expectNotChecked("disconnected");
    stop();
    ASSERT_TRUE(start());
    expectBack();
}

TEST_F(AFailingDisk, ThatIsSlowCanBeLeftDuringTheWalk) {
    breakPart("slow");
    RunningProgram check(brindle.launch({"check"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    check.signal(SIGINT);
    EXPECT_EQ(check.wait().exitCode, 130);
    EXPECT_EQ(Records(brindle).whatWasCounted(), counted);
}

TEST_F(AFailingDisk, ThatHangsCanBeLeft) {
    server->signal(SIGSTOP);
    RunningProgram check(brindle.launch({"check"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(brindle.run({"check"}).exitCode, 5) << "the first one is at work";
    // The first signal asks, which a program that waits for the disk does not hear. The second one ends it.
    check.signal(SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_TRUE(check.isRunning());
    check.signal(SIGINT);
    EXPECT_EQ(check.wait().exitCode, -SIGINT);
    server->signal(SIGCONT);
    EXPECT_EQ(Records(brindle).whatWasCounted(), counted);
    expectBack();
}

}  // namespace
}  // namespace brindle
