#include "linux/windows/EveryDesktop.h"

#include "linux/x11/Xcb.h"

#include <QGuiApplication>
#include <QWindow>
#include <cstdint>

namespace quillo {

void showOnEveryDesktop(QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return;
    xcb_connection_t* connection = x11->connection();
    static const xcb_atom_t desktop = atom(connection, "_NET_WM_DESKTOP");
    static const xcb_atom_t state = atom(connection, "_NET_WM_STATE");
    static const xcb_atom_t sticky = atom(connection, "_NET_WM_STATE_STICKY");
    if (desktop == XCB_ATOM_NONE || state == XCB_ATOM_NONE || sticky == XCB_ATOM_NONE)
        return;
    const auto handle = static_cast<xcb_window_t>(window.winId());
    constexpr std::uint32_t every = 0xFFFFFFFF;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, handle, desktop, XCB_ATOM_CARDINAL, 32, 1, &every);
    // xfwm4 4.18 takes that for the last desktop, unless the window is to stay where it is, too. Qt adds to
    // this what it wants itself when it shows the window.
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, handle, state, XCB_ATOM_ATOM, 32, 1, &sticky);
}

} // namespace quillo
