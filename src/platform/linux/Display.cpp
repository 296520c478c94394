#include "platform/Display.h"

#include "platform/FileDescriptor.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

namespace brindle {
namespace {

/// Of a socket file, or of an abstract name, which begins with NUL; see unix(7).
bool takesConnections(const std::string& address) {
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    if (address.size() >= sizeof name.sun_path) return false;
    std::ranges::copy(address, name.sun_path);
    const bool isFile = address.front() != '\0';
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + address.size() + (isFile ? 1 : 0));
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // A queue that is full belongs to a server that lives.
    return connect(socket.get(), reinterpret_cast<const sockaddr*>(&name), length) == 0 || errno == EAGAIN;
}

/// "host:number.screen"; without a host, or with "unix", it is on this computer.
bool isLiveX11(const std::string& display) {
    const auto colon = display.rfind(':');
    if (colon == std::string::npos) return false;
    const std::string host = display.substr(0, colon);
    if (!host.empty() && host != "unix") return true;
    const std::string number = display.substr(colon + 1, display.find('.', colon) - colon - 1);
    const std::string file = "/tmp/.X11-unix/X" + number;
    return takesConnections(file) || takesConnections(std::string(1, '\0') + file);
}

/// A name in the runtime folder, or a whole path.
bool isLiveWayland(const std::string& display) {
    if (display.front() == '/') return takesConnections(display);
    const auto folder = environmentValue("XDG_RUNTIME_DIR");
    return folder && takesConnections(*folder + "/" + display);
}

}  // namespace

bool hasDisplay() {
    // How the window's library is told where to open, for instance nowhere.
    const std::string platform = environmentValue("QT_QPA_PLATFORM").value_or("");
    if (!platform.empty() && !platform.starts_with("xcb") && !platform.starts_with("wayland")) return true;
    const std::string wayland = environmentValue("WAYLAND_DISPLAY").value_or("");
    if (!wayland.empty() && isLiveWayland(wayland)) return true;
    const std::string x11 = environmentValue("DISPLAY").value_or("");
    return !x11.empty() && isLiveX11(x11);
}

}  // namespace brindle
