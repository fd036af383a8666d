/// The desktop's reminders, as far as they are still to come.
#pragma once

#include <string>

namespace quillo {

/// Belongs to the main thread.
class ReminderCenter {
public:
    virtual ~ReminderCenter() = default;

    /// Removes the pending reminder of that identifier, if there is one. One already delivered is left alone.
    virtual void removePending(const std::string& identifier) = 0;
};

} // namespace quillo
