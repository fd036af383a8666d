#include "linux/appearance/CompositorWatch.h"

#include "base/Log.h"
#include "linux/x11/Xcb.h"

#include <xcb/xfixes.h>

#include <string>

namespace quillo {

namespace {

constexpr std::uint32_t everyChange = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;

} // namespace

void CompositorWatch::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

CompositorWatch::CompositorWatch() {
    int screen = 0;
    connection_.reset(xcb_connect(nullptr, &screen));
    auto* connection = connection_.get();
    if (xcb_connection_has_error(connection) != 0) {
        log("whether windows are composited cannot be known: the display cannot be reached");
        return;
    }
    const std::string name = "_NET_WM_CM_S" + std::to_string(screen);
    selection_ = atom(connection, name);
    if (selection_ == XCB_ATOM_NONE)
        return;
    // Before asking who owns it, so that no change is missed in between.
    follow();
    const auto owner = owned(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection_), nullptr));
    present_ = owner && owner->owner != XCB_WINDOW_NONE;
}

CompositorWatch::~CompositorWatch() = default;

void CompositorWatch::follow() {
    auto* connection = connection_.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) {
        log("a compositor that comes or goes will not be noticed: the display has no XFixes");
        return;
    }
    // A server answers nothing of XFixes before it has been told what the client understands.
    owned(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    ownerChanged_ = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_select_selection_input(connection, rootWindow(connection), selection_, everyChange);
    readable_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, [this] { read(); });
    xcb_flush(connection);
}

void CompositorWatch::read() {
    auto* connection = connection_.get();
    bool now = present_;
    while (const auto event = owned(xcb_poll_for_event(connection))) {
        if ((event->response_type & 0x7F) != ownerChanged_)
            continue;
        const auto* change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event.get());
        if (change->selection == selection_)
            now = change->owner != XCB_WINDOW_NONE;
    }
    if (xcb_connection_has_error(connection) != 0)
        readable_->setEnabled(false); // The display is gone, and with it whatever could be seen.
    if (now == present_)
        return;
    present_ = now;
    changed.emit();
}

} // namespace quillo
