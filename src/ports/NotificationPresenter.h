/// Shows notifications on the desktop.
#pragma once

#include "base/Signal.h"
#include "ports/NotificationContent.h"

#include <functional>
#include <string>

namespace quillo {

/// Belongs to the main thread.
class NotificationPresenter {
public:
    /// Told once, possibly before show() returns: true when the desktop has taken the notification, false
    /// when nobody will see it.
    using Answer = std::function<void(bool delivered)>;

    virtual ~NotificationPresenter() = default;

    /// Shows a notification, in place of one with its identifier that is still shown. Several may come one
    /// right after the other, also with the same content; each counts.
    virtual void show(const std::string& identifier, const NotificationContent& content, Answer answer) = 0;

    /// Emitted when showing may succeed again after it failed.
    Signal<> becameAvailable;
};

} // namespace quillo
