#include "ui/tray/X11Desktop.h"

#include <QGuiApplication>
#include <QWindow>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace brindle::x11Desktop {
namespace {

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};

/// Null under another window system.
xcb_connection_t* connection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* server, std::string_view name) {
    const auto cookie = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> reply(
        xcb_intern_atom_reply(server, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace

bool hasTray() {
    xcb_connection_t* const server = connection();
    if (server == nullptr) return false;
    const auto cookie = xcb_get_selection_owner(server, atom(server, "_NET_SYSTEM_TRAY_S0"));
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Freed> reply(
        xcb_get_selection_owner_reply(server, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void joinAllDesktops(QWindow& window) {
    xcb_connection_t* const server = connection();
    if (server == nullptr) return;
    constexpr std::uint32_t every = 0xFFFFFFFF;
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom(server, "_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1, &every);
}

}  // namespace brindle::x11Desktop
