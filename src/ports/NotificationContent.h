/// What a notification says, and how urgently.
#pragma once

#include <string>

namespace quillo {

enum class InterruptionLevel { passive = 0, active = 1, timeSensitive = 2, critical = 3 };

struct NotificationContent {
    std::string title; ///< UTF-8
    std::string body;  ///< UTF-8
    bool sound = true; ///< with the default notification sound
    InterruptionLevel interruptionLevel = InterruptionLevel::active;

    friend bool operator==(const NotificationContent&, const NotificationContent&) = default;
};

} // namespace quillo
