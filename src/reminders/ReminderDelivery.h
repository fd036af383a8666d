/// Shows what the book of reminders holds, when it is due.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "base/Signal.h"
#include "ports/NotificationPresenter.h"
#include "ports/WallClockTimer.h"
#include "reminders/ReminderBook.h"
#include "unicode/CivilCalendar.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quillo {

/// What the delivery works with; all of it outlives the delivery.
struct ReminderDeliveryDependencies {
    ReminderBook& book; ///< in line with the list (AlignReminders.h)
    const Clock& clock;
    const unicode::CivilCalendar& calendar; ///< where the user lives now; see calendarChanged()
    WallClockTimer& timer;                  ///< nobody else's
    NotificationPresenter& presenter;
    /// What the notification for that many reminders that get none of their own says.
    std::function<std::string(std::size_t count)> moreText;
};

/// Each reminder is shown once, not before the clock shows its minute, in the zone where the user is then.
/// One whose minute is over (the program did not run, the machine slept, the clock was set, the user has
/// moved) is shown as soon as that is noticed; of many such the latest five get a notification of their own
/// and all earlier ones share another, which comes last.
///
/// A reminder is marked as delivered when the desktop has taken its notification. So one whose notification
/// is on its way when the program is killed is shown again; none is lost. One that the desktop did not take
/// is shown when the presenter becomes available, or together with the next reminder that is due. What is
/// removed from the book is not shown, unless it is on its way already; what is booked anew under the
/// identifier of one that is on its way is shown as well, when it is due.
///
/// Nothing is shown from within a call of this or of the book, only when the timer fires. The timer follows
/// the clock whatever happens to it, so suspend and resume need no care. Belongs to the main thread.
class ReminderDelivery {
public:
    /// How many reminders whose minute is over get a notification of their own at once.
    static constexpr std::size_t mostLate = 5;

    /// The identifier of the notification that the others share.
    static constexpr const char* moreIdentifier = "quillo.more";

    explicit ReminderDelivery(ReminderDeliveryDependencies dependencies);
    ~ReminderDelivery();

    ReminderDelivery(const ReminderDelivery&) = delete;
    ReminderDelivery& operator=(const ReminderDelivery&) = delete;

    /// The calendar was exchanged for one in another zone.
    void calendarChanged();

private:
    struct Due {
        Instant at;
        ReminderRequest request;
    };

    void follow(const std::string& identifier);
    void rearm();
    void deliver();
    std::vector<Due> takeDue(Instant now);
    void show(const std::string& identifier, const NotificationContent& content,
              std::vector<ReminderRequest> requests);
    void answered(const std::vector<ReminderRequest>& requests, bool delivered);

    const ReminderDeliveryDependencies with_;
    std::map<std::string, Instant> instants_;            ///< when each undelivered reminder is due
    std::set<std::pair<Instant, std::string>> schedule_; ///< the same, in order
    std::set<std::string> onTheirWay_;                   ///< shown, not answered yet
    std::set<std::string> failed_;                       ///< not taken when they were shown last
    std::optional<Instant> armed_;
    std::vector<Connection> connections_;
    CallbackScope scope_;
};

} // namespace quillo
