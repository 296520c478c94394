#include "platform/FolderProbe.h"
#include "support/ChildProcess.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"

#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;

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

    const auto mounts = MountTable::current();
    const auto expectState = [&](FolderState state, const std::vector<fs::path>& paths) {
        for (const auto& path : paths) EXPECT_EQ(probeFolder(folder / path, mounts).state, state) << path;
    };
    expectState(FolderState::readable, {"real", "relative", "absolute/inner", "winding/inner", "up", "/"});
    expectState(FolderState::notAFolder, {"file", "to-file"});
    expectState(FolderState::missing, {"absent", "file/below", "dangling", "loop", std::string(300, 'x'),
                                       std::string("real\0x", 6)});
    expectState(FolderState::pseudo, {"/proc/self"});

    EXPECT_EQ(realPath(folder / "winding/inner", mounts), folder / "real/inner");
    EXPECT_EQ(realPath(folder / "to-file", mounts), folder / "file");
    EXPECT_FALSE(realPath(folder / "dangling", mounts));
    const auto identityOf = [&](const char* name) { return probeFolder(folder / name, mounts).identity; };
    EXPECT_EQ(identityOf("winding"), identityOf("real"));
    EXPECT_NE(identityOf("relative"), identityOf("real"));
}

TEST(FolderProbe, AServerIsNeverTouchedHoweverThePathComesThere) {
    const TempFolder temporary;
    const auto& folder = temporary.path();
    fs::create_directories(folder / "server/inner");
    fs::create_directory_symlink("server", folder / "link");
    fs::create_directory_symlink(folder / "link/inner", folder / "chain");
    const auto now = MountTable::current();
    auto rows = now.mounts();  // and one more, where in truth there is a plain folder
    rows.push_back({.id = 1 << 30,
                    .parentID = now.holding(folder.native())->id,
                    .target = folder / "server",
                    .type = "nfs4"});
    const MountTable mounts(std::move(rows));
    for (const auto* name : {"server", "server/inner", "server/absent", "link", "link/inner/x", "chain"}) {
        EXPECT_EQ(probeFolder(folder / name, mounts).state, FolderState::notLocal) << name;
        EXPECT_FALSE(realPath(folder / name, mounts)) << name;
    }
    EXPECT_EQ(probeFolder(folder, mounts).state, FolderState::readable);
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
    explicit Automount(fs::path target) : target_(std::move(target)) {
        if (::pipe2(requests_, O_CLOEXEC | O_NONBLOCK) != 0)
            throw std::runtime_error("no pipe could be made");
        const auto options =
            fmt::format("fd={},pgrp={},minproto=5,maxproto=5,direct", requests_[1], ::getpgrp());
        isMounted_ = ::mount("auto.test", target_.c_str(), "autofs", 0, options.c_str()) == 0;
    }
    ~Automount() {
        if (isMounted_) ::umount2(target_.c_str(), MNT_DETACH);
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
    fs::path target_;
    int requests_[2] = {-1, -1};
    bool isMounted_ = false;
};

TEST(FolderProbe, MountsNothing) {
    SKIP_UNLESS_MOUNTS_WORK();
    const TempFolder folder;
    const Automount automount(folder.path());
    if (!automount.isMounted()) GTEST_SKIP() << "the system has no automounter";
    const auto endsInTime = [&](const std::function<void()>& body) {
        return inChildProcess([&] {
                   ::setpgid(0, 0);  // the group that mounted it may enter it
                   ::alarm(2);       // who asks for the mount waits for it
                   body();
               }) == 0;
    };
    EXPECT_TRUE(endsInTime([&] {
        const auto mounts = MountTable::current();
        if (probeFolder(folder.path(), mounts).state != FolderState::pseudo ||
            probeFolder(folder.path() / "below", mounts).state != FolderState::missing)
            throw std::logic_error("another state");
    }));
    EXPECT_FALSE(automount.wasAsked());
    EXPECT_FALSE(endsInTime([&] { (void)fs::exists(folder.path() / "below"); }));
    EXPECT_TRUE(automount.wasAsked()) << "the test can tell";
}

}  // namespace
}  // namespace brindle
