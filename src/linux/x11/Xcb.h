/// What talking to the X server is like everywhere.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quillo {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// A reply, event or error of libxcb, which leaves them to who asked for them.
template <class Reply>
std::unique_ptr<Reply, FreeReply> owned(Reply* reply) {
    return std::unique_ptr<Reply, FreeReply>(reply);
}

/// The server's number for a name, or XCB_ATOM_NONE where the server is gone. Waits for the server.
inline xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto reply = owned(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The root window of the first screen, which is the only one on all but very old setups.
inline xcb_window_t rootWindow(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

} // namespace quillo
