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

struct WindowManager {
    xcb_window_t window = XCB_WINDOW_NONE; ///< its own, which some give the keyboard to for want of another
    std::string name;                      ///< what it calls itself
};

/// What is known of it (Extended Window Manager Hints, _NET_SUPPORTING_WM_CHECK:
/// https://specifications.freedesktop.org/wm-spec/latest/); nothing where there is none.
WindowManager windowManager(xcb_connection_t* connection) {
    const auto window = owned(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, rootWindow(connection), atom(connection, "_NET_SUPPORTING_WM_CHECK"),
                         XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    if (!window || xcb_get_property_value_length(window.get()) != sizeof(xcb_window_t))
        return {};
    const auto handle = *static_cast<xcb_window_t*>(xcb_get_property_value(window.get()));
    const auto name =
        owned(xcb_get_property_reply(connection,
                                     xcb_get_property(connection, 0, handle, atom(connection, "_NET_WM_NAME"),
                                                      XCB_GET_PROPERTY_TYPE_ANY, 0, longestName),
                                     nullptr));
    if (!name)
        return {};
    return {handle,
            {static_cast<const char*>(xcb_get_property_value(name.get())),
             static_cast<std::size_t>(xcb_get_property_value_length(name.get()))}};
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
    KeyboardOfX11(xcb_connection_t* connection, const QWindow& window, xcb_window_t windowManager)
        : connection_(connection), window_(window), windowManager_(windowManager),
          currentWorkspace_(atom(connection, "_NET_CURRENT_DESKTOP")) {}
    ~KeyboardOfX11() override { forget(); }

    void take() override {
        forget();
        // The answers are read when they are wanted.
        owner_ = xcb_get_input_focus(connection_).sequence;
        workspaceThen_ = askForWorkspace().sequence;
        give(static_cast<xcb_window_t>(window_.winId()), XCB_INPUT_FOCUS_POINTER_ROOT);
    }

    void takeFromNobody() override {
        const auto now = focus(xcb_get_input_focus(connection_));
        if (!now || !workspaceThen_ ||
            (now->focus != XCB_INPUT_FOCUS_NONE && now->focus != XCB_INPUT_FOCUS_POINTER_ROOT &&
             now->focus != rootWindow(connection_) && now->focus != windowManager_))
            return;
        // On another workspace without windows nobody has it either, and the user has left ours. Once only: a
        // window manager that insists is not fought.
        if (workspace({*std::exchange(workspaceThen_, std::nullopt)}) == workspace(askForWorkspace()))
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
        for (auto* question : {&owner_, &workspaceThen_})
            if (*question)
                xcb_discard_reply(connection_, *std::exchange(*question, std::nullopt));
    }

    xcb_get_property_cookie_t askForWorkspace() {
        return xcb_get_property(connection_, 0, rootWindow(connection_), currentWorkspace_, XCB_ATOM_CARDINAL,
                                0, 1);
    }

    /// Nothing where there are no workspaces.
    std::optional<std::uint32_t> workspace(xcb_get_property_cookie_t cookie) {
        const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
        if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(std::uint32_t))
            return std::nullopt;
        return *static_cast<std::uint32_t*>(xcb_get_property_value(reply.get()));
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
    const xcb_window_t windowManager_;
    const xcb_atom_t currentWorkspace_;
    // Questions that the server has yet to be heard about.
    std::optional<unsigned int> owner_;         ///< who had the keyboard
    std::optional<unsigned int> workspaceThen_; ///< which workspace was shown
};

} // namespace

std::unique_ptr<BorrowedKeyboard> withoutWindowManager(QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return nullptr;
    xcb_connection_t* connection = x11->connection();
    const WindowManager manager = windowManager(connection);
    if (std::find(followTheKeyboard.begin(), followTheKeyboard.end(), manager.name) ==
            followTheKeyboard.end() ||
        isGuestOfWayland(connection))
        return nullptr;
    window.setFlag(Qt::BypassWindowManagerHint);
    return std::make_unique<KeyboardOfX11>(connection, window, manager.window);
}

} // namespace quillo
