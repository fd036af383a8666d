#include "linux/windows/EveryDesktop.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace quillo {

namespace {

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    const xcb_atom_t found = reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    std::free(reply);
    return found;
}

} // namespace

void showOnEveryDesktop(QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return;
    xcb_connection_t* connection = x11->connection();
    static const xcb_atom_t desktop = atom(connection, "_NET_WM_DESKTOP");
    if (desktop == XCB_ATOM_NONE)
        return;
    constexpr std::uint32_t every = 0xFFFFFFFF;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()), desktop,
                        XCB_ATOM_CARDINAL, 32, 1, &every);
}

} // namespace quillo
