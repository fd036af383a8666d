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
    if (desktop == XCB_ATOM_NONE)
        return;
    constexpr std::uint32_t every = 0xFFFFFFFF;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()), desktop,
                        XCB_ATOM_CARDINAL, 32, 1, &every);
}

} // namespace quillo
