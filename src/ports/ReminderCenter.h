/// The desktop's reminders, as far as they are still to come, and the permission to remind.
#pragma once

#include "base/Instant.h"
#include "base/Result.h"
#include "ports/NotificationContent.h"

#include <functional>
#include <string>

namespace quillo {

/// What the user has said to being notified. Provisional and ephemeral permissions are permissions.
enum class ReminderAuthorization { notDetermined, denied, authorized, provisional, ephemeral };

/// What permission is asked for: a sum of these.
namespace reminder_options {

inline constexpr unsigned badge = 1;
inline constexpr unsigned sound = 2;
inline constexpr unsigned alert = 4;

} // namespace reminder_options

/// A minute as the user's calendar and clock show it, wherever the user is when it comes. Numbered as in
/// unicode/CivilCalendar.h.
struct CalendarMinute {
    int year = 0;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;

    friend bool operator==(const CalendarMinute&, const CalendarMinute&) = default;
};

/// A notification to be delivered once, at the start of a minute.
struct ReminderRequest {
    std::string identifier; ///< of requests with the same one, the last that was added counts
    NotificationContent content;
    CalendarMinute at;
    Instant dueDate; ///< the task's, from which `at` was taken: tells whether the task still has that date

    friend bool operator==(const ReminderRequest&, const ReminderRequest&) = default;
};

/// Belongs to the main thread. What is asked first is done first. Each answer is given once, possibly before
/// the call returns.
class ReminderCenter {
public:
    virtual ~ReminderCenter() = default;

    virtual void authorizationStatus(std::function<void(ReminderAuthorization)> answer) = 0;

    /// Asks the user for permission to what `options` (reminder_options) names; answers whether it was given.
    virtual void requestAuthorization(unsigned options, std::function<void(Result<bool>)> answer) = 0;

    /// Makes a request pending, in place of a pending one with its identifier.
    virtual void add(ReminderRequest request, std::function<void(Outcome)> answer) = 0;

    /// Removes the pending reminder of that identifier, if there is one. One already delivered is left alone.
    virtual void removePending(const std::string& identifier) = 0;
};

} // namespace quillo
