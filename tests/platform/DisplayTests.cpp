#include "platform/Display.h"
#include "platform/FileDescriptor.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace brindle {
namespace {

void setOrClear(const char* name, const std::string& value) {
    value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
}

/// A server that takes connections at this path for as long as it is open.
FileDescriptor serverAt(const std::string& path) {
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    path.copy(name.sun_path, sizeof name.sun_path - 1);
    EXPECT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    EXPECT_EQ(listen(socket.get(), 1), 0);
    return socket;
}

TEST(Display, IsOneThatTakesConnections) {
    const TempFolder folder;
    const auto hasOne = [&](const std::string& platform, const std::string& wayland, const std::string& x11) {
        setOrClear("XDG_RUNTIME_DIR", folder.path());
        setOrClear("QT_QPA_PLATFORM", platform);
        setOrClear("WAYLAND_DISPLAY", wayland);
        setOrClear("DISPLAY", x11);
        return hasDisplay();
    };
    EXPECT_FALSE(hasOne("", "", ""));
    EXPECT_TRUE(hasOne("offscreen", "", ""));
    EXPECT_FALSE(hasOne("xcb", "", ""));
    EXPECT_FALSE(hasOne("", "wayland-7", ""));
    EXPECT_FALSE(hasOne("", "", ":32109.0"));
    EXPECT_FALSE(hasOne("", "", "no display"));
    EXPECT_TRUE(hasOne("", "", "another.computer:0"));

    std::string path = folder.path() / "wayland-7";
    {
        const FileDescriptor server = serverAt(path);
        EXPECT_TRUE(hasOne("", "wayland-7", ""));
        EXPECT_TRUE(hasOne("wayland;xcb", path, ":32109"));
    }
    EXPECT_FALSE(hasOne("", "wayland-7", "")) << "the file is left, the server is gone";
    EXPECT_FALSE(hasOne("", std::string(200, 'w'), ""));
}

}  // namespace
}  // namespace brindle
