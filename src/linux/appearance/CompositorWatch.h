/// Notices whether windows on an X screen are composited.
#pragma once

#include "base/Signal.h"

#include <QSocketNotifier>
#include <cstdint>
#include <memory>

struct xcb_connection_t;

namespace quillo {

/// Whoever composites a screen owns its selection _NET_WM_CM_S<screen> (Extended Window Manager Hints,
/// "Compositing Managers": https://specifications.freedesktop.org/wm-spec/latest/). Watched on a connection
/// of its own; the X server tells, nothing is polled.
class CompositorWatch {
public:
    /// The default screen of the display that DISPLAY names. Where that cannot be reached, or its changes
    /// cannot be followed, the log says so.
    CompositorWatch();
    ~CompositorWatch();

    CompositorWatch(const CompositorWatch&) = delete;
    CompositorWatch& operator=(const CompositorWatch&) = delete;

    bool present() const { return present_; }

    Signal<> changed;

private:
    void follow();
    void read();

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    std::unique_ptr<QSocketNotifier> readable_;
    std::uint32_t selection_ = 0;
    std::uint8_t ownerChanged_ = 0; ///< the number of the event
    bool present_ = false;
};

} // namespace quillo
