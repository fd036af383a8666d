#include "linux/windows/WithoutWindowManager.h"

#include "linux/x11/Xcb.h"

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillo {

namespace {

/// Those that were seen, with two terminals and a popover between them, to follow the keyboard wherever it
/// goes: Escape, clicks on either terminal, on the icon and on another workspace all left it where it
/// belongs. Not so with fluxbox 1.3, i3 4.22 and IceWM 3.3.
constexpr std::array<std::string_view, 6> followTheKeyboard = {"KWin",   "Metacity", "Metacity (Marco)",
                                                               "Mutter", "Openbox",  "Xfwm4"};

constexpr std::uint32_t longestName = 64; ///< in units of four bytes

/// What the window manager calls itself (Extended Window Manager Hints, _NET_SUPPORTING_WM_CHECK:
/// https://specifications.freedesktop.org/wm-spec/latest/); empty where there is none.
std::string windowManager(xcb_connection_t* connection) {
    const auto window = owned(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, rootWindow(connection), atom(connection, "_NET_SUPPORTING_WM_CHECK"),
                         XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    if (!window || xcb_get_property_value_length(window.get()) != sizeof(xcb_window_t))
        return {};
    const auto name = owned(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, *static_cast<xcb_window_t*>(xcb_get_property_value(window.get())),
                         atom(connection, "_NET_WM_NAME"), XCB_GET_PROPERTY_TYPE_ANY, 0, longestName),
        nullptr));
    if (!name)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(name.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(name.get()))};
}

/// In such a guest a window may have the keyboard of the other X11 windows, but not that of the desktop.
bool isGuestOfWayland(xcb_connection_t* connection) {
    constexpr std::string_view name = "XWAYLAND";
    const auto extension = owned(xcb_query_extension_reply(
        connection, xcb_query_extension(connection, name.size(), name.data()), nullptr));
    return extension && extension->present != 0;
}

class KeyboardOfX11 final : public BorrowedKeyboard {
public:
    KeyboardOfX11(xcb_connection_t* connection, const QWindow& window)
        : connection_(connection), window_(window) {}
    ~KeyboardOfX11() override { forget(); }

    void take() override {
        forget();
        // The answer is read when it is wanted.
        owner_ = xcb_get_input_focus(connection_).sequence;
        give(static_cast<xcb_window_t>(window_.winId()), XCB_INPUT_FOCUS_POINTER_ROOT);
    }

    void giveBack() override {
        if (!owner_)
            return;
        const auto before = focus({*std::exchange(owner_, std::nullopt)});
        const auto now = focus(xcb_get_input_focus(connection_));
        if (before && now && now->focus == window_.winId())
            give(before->focus, before->revert_to);
    }

private:
    void forget() {
        if (owner_)
            xcb_discard_reply(connection_, *std::exchange(owner_, std::nullopt));
    }

    std::unique_ptr<xcb_get_input_focus_reply_t, FreeReply> focus(xcb_get_input_focus_cookie_t cookie) {
        return owned(xcb_get_input_focus_reply(connection_, cookie, nullptr));
    }

    /// The window may have gone meanwhile, which is nobody's fault. The time is the server's: that of our
    /// last event may be from before the keyboard last went to another window, and would not count.
    void give(xcb_window_t window, std::uint8_t revertTo) {
        xcb_discard_reply(
            connection_,
            xcb_set_input_focus_checked(connection_, revertTo, window, XCB_CURRENT_TIME).sequence);
        xcb_flush(connection_);
    }

    xcb_connection_t* const connection_;
    const QWindow& window_;
    std::optional<unsigned int> owner_; ///< the question who had the keyboard, to be answered by the server
};

} // namespace

std::unique_ptr<BorrowedKeyboard> withoutWindowManager(QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return nullptr;
    xcb_connection_t* connection = x11->connection();
    const std::string name = windowManager(connection);
    if (std::find(followTheKeyboard.begin(), followTheKeyboard.end(), name) == followTheKeyboard.end() ||
        isGuestOfWayland(connection))
        return nullptr;
    window.setFlag(Qt::BypassWindowManagerHint);
    return std::make_unique<KeyboardOfX11>(connection, window);
}

} // namespace quillo
