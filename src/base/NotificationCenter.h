/// In-process events by name, without sender and payload: for what concerns several parts of the program at
/// once.
#pragma once

#include "base/Signal.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace quillo {

namespace notifications {

/// Posted when completing a task leaves none open.
inline constexpr std::string_view inboxZero = "Quillo.InboxZero";

} // namespace notifications

/// Belongs to the main thread.
class NotificationCenter {
public:
    /// Calls `slot` each time an event of that name is posted, until the connection is dropped.
    Connection observe(std::string_view name, std::function<void()> slot) {
        return events_[std::string(name)].connect(std::move(slot));
    }

    void post(std::string_view name) {
        if (const auto event = events_.find(name); event != events_.end())
            event->second.emit();
    }

private:
    std::map<std::string, Signal<>, std::less<>> events_;
};

} // namespace quillo
