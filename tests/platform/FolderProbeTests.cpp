#include "platform/FolderProbe.h"
#include "support/ChildProcess.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// The real table with a row more: a server mounted at `target`, where in truth there is a plain folder.
MountTable withServerAt(const fs::path& target) {
    const auto table = MountTable::current();
    auto mounts = table.mounts();
    mounts.push_back({.id = 1 << 30,
                      .parentID = table.holding(target.native())->id,
                      .target = target,
                      .root = "/",
                      .type = "nfs4",
                      .source = "server.example:/export"});
    return MountTable(std::move(mounts));
}

TEST(FolderProbe, TellsWhatStandsAtAPath) {
    const TempFolder temporary;
    const auto& folder = temporary.path();
    fs::create_directories(folder / "real/inner");
    std::ofstream(folder / "file").close();
    fs::create_directory_symlink("real/inner", folder / "relative");
    fs::create_directory_symlink(folder / "real", folder / "absolute");
    fs::create_directory_symlink("absolute/inner/../../real", folder / "winding");
    fs::create_directory_symlink("../../../../../../../..", folder / "up");
    fs::create_symlink("file", folder / "to-file");
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");

    const struct {
        fs::path path;
        FolderState state;
    } cases[] = {
        {folder / "real", FolderState::readable},
        {folder / "relative", FolderState::readable},
        {folder / "absolute/inner", FolderState::readable},
        {folder / "winding/inner", FolderState::readable},
        {folder / "up", FolderState::readable},
        {"/", FolderState::readable},
        {folder / "file", FolderState::notAFolder},
        {folder / "to-file", FolderState::notAFolder},
        {folder / "absent", FolderState::missing},
        {folder / "file/below", FolderState::missing},
        {folder / "dangling", FolderState::missing},
        {folder / "loop", FolderState::missing},
        {folder / std::string(300, 'x'), FolderState::missing},
        {folder.native() + std::string("/real\0x", 7), FolderState::missing},
        {"/proc/self", FolderState::pseudo},
    };
    const auto mounts = MountTable::current();
    for (const auto& [path, state] : cases) EXPECT_EQ(probeFolder(path, mounts).state, state) << path;

    EXPECT_EQ(realPath(folder / "winding/inner", mounts), folder / "real/inner");
    EXPECT_EQ(realPath(folder / "to-file", mounts), folder / "file");
    EXPECT_FALSE(realPath(folder / "dangling", mounts));
    EXPECT_EQ(probeFolder(folder / "winding", mounts).identity,
              probeFolder(folder / "real", mounts).identity);
    EXPECT_NE(probeFolder(folder / "relative", mounts).identity,
              probeFolder(folder / "real", mounts).identity);
}

TEST(FolderProbe, AServerIsNeverTouchedHoweverThePathComesThere) {
    const TempFolder temporary;
    const auto& folder = temporary.path();
    fs::create_directories(folder / "server/inner");
    fs::create_directory_symlink("server", folder / "link");
    fs::create_directory_symlink(folder / "link/inner", folder / "chain");
    const auto mounts = withServerAt(folder / "server");
    for (const auto* name : {"server", "server/inner", "server/absent", "link", "link/inner/x", "chain"})
        EXPECT_EQ(probeFolder(folder / name, mounts).state, FolderState::notLocal) << name;
    EXPECT_EQ(probeFolder(folder, mounts).state, FolderState::readable);
    EXPECT_FALSE(realPath(folder / "chain", mounts));
    EXPECT_FALSE(realPath(folder / "server", mounts));
}

TEST(FolderProbe, AMountThatIsNewerThanTheTableIsMissing) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const auto before = MountTable::current();
    const auto memory = TestMount::memory(folder.path());
    EXPECT_EQ(probeFolder(folder.path(), before).state, FolderState::missing);
    EXPECT_EQ(probeFolder(folder.path(), MountTable::current()).state, FolderState::readable);
}

/// A folder that asks a program to mount something as soon as it is entered. The request stays unanswered.
class Automount {
public:
    explicit Automount(const fs::path& target) {
        if (::pipe2(requests_, O_CLOEXEC | O_NONBLOCK) != 0)
            throw std::runtime_error("no pipe could be made");
        program_ = ::fork();
        if (program_ == 0) ::pause();
        ::setpgid(program_, program_);
        const auto options = "fd=" + std::to_string(requests_[1]) + ",pgrp=" + std::to_string(program_) +
                             ",minproto=5,maxproto=5,direct";
        isMounted_ = ::mount("auto.test", target.c_str(), "autofs", 0, options.c_str()) == 0;
        if (isMounted_) target_ = target;
    }
    ~Automount() {
        if (isMounted_) ::umount2(target_.c_str(), MNT_DETACH);
        ::kill(program_, SIGKILL);
        ::waitpid(program_, nullptr, 0);
        for (const int end : requests_) ::close(end);
    }
    Automount(const Automount&) = delete;
    Automount& operator=(const Automount&) = delete;

    [[nodiscard]] bool isMounted() const { return isMounted_; }
    [[nodiscard]] bool wasAsked() const {
        pollfd request{.fd = requests_[0], .events = POLLIN, .revents = 0};
        return ::poll(&request, 1, 0) != 0;
    }

private:
    int requests_[2] = {-1, -1};
    pid_t program_ = -1;
    bool isMounted_ = false;
    fs::path target_;
};

TEST(FolderProbe, MountsNothing) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const Automount automount(folder.path());
    if (!automount.isMounted()) GTEST_SKIP() << "the system has no automounter";
    const auto statesInTime = [&](const fs::path& path, FolderState expected) {
        return inChildProcess([&] {
                   ::alarm(5);  // who asks for the mount waits for it
                   if (probeFolder(path, MountTable::current()).state != expected) throw std::logic_error("");
               }) == 0;
    };
    EXPECT_TRUE(statesInTime(folder.path(), FolderState::pseudo));
    EXPECT_TRUE(statesInTime(folder.path() / "below", FolderState::missing));
    EXPECT_FALSE(automount.wasAsked());

    EXPECT_NE(inChildProcess([&] {
                  ::alarm(1);
                  (void)fs::exists(folder.path() / "below");
              }),
              0);
    EXPECT_TRUE(automount.wasAsked()) << "the test can tell";
}

TEST(FolderProbe, ARefusalKeepsTheVolumeInSight) {
    const TempFolder temporary;
    const auto& folder = temporary.path();
    fs::permissions(folder, fs::perms(0755));
    for (const auto* name : {"unlisted", "unentered", "closed", "closed/inner"})
        fs::create_directory(folder / name);
    fs::permissions(folder / "unlisted", fs::perms(0311));
    fs::permissions(folder / "unentered", fs::perms(0644));
    fs::permissions(folder / "closed", fs::perms::none);
    const auto mounts = MountTable::current();
    const auto volumeID = probeFolder(folder, mounts).volumeID;
    for (const auto* name : {"unlisted", "unentered", "closed", "closed/inner"})
        EXPECT_TRUE(holdsUnprivileged([&] {
            const auto probe = probeFolder(folder / name, mounts);
            return probe.state == FolderState::refused && probe.volumeID == volumeID && !probe.folder;
        })) << name;
    for (const auto* name : {"unlisted", "unentered", "closed"})
        fs::permissions(folder / name, fs::perms::owner_all);
}

}  // namespace
}  // namespace brindle
