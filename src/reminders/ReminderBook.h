/// The book of reminders: what is to be shown when, kept in the preferences.
///
/// Whoever holds the preferences may write it, also a command that runs while nobody is there to show
/// anything; the resident program shows what is in it (ReminderDelivery.h). It is not worth more than the
/// list it was made from: where it is lost or damaged, alignReminders makes what is to come anew.
#pragma once

#include "base/Signal.h"
#include "ports/Preferences.h"
#include "ports/ReminderCenter.h"
#include "reminders/ReminderBookJson.h"

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// Belongs to the main thread. Answers come before the call returns. Every change is one write, which does
/// not wait for the disk; what changes nothing writes nothing.
///
/// A reminder that was shown stays booked as delivered, until its task is completed, removed or given another
/// date. Otherwise it would look like one that is missing: it is shown when the minute of its date begins, or
/// in a zone further east, or the clock is set back later.
class ReminderBook final : public ReminderCenter {
public:
    /// Reads the book. Entries that are no reminders are left out, and a line is logged.
    explicit ReminderBook(Preferences& preferences);

    const BookedReminders& reminders() const { return reminders_; }
    const BookedReminder* find(std::string_view identifier) const;

    /// Nobody has to be asked on this platform.
    void authorizationStatus(std::function<void(ReminderAuthorization)> answer) override;
    void requestAuthorization(unsigned options, std::function<void(Result<bool>)> answer) override;

    /// Fails where the book would become too large, or the request could not be read back.
    void add(ReminderRequest request, std::function<void(Outcome)> answer) override;
    void removePending(const std::string& identifier) override;

    /// The requests have been shown. Each is delivered now, unless it is gone or one with another date has
    /// taken its place.
    void markDelivered(const std::vector<ReminderRequest>& shown);

    /// Books these and no others.
    void replaceAll(const BookedReminders& wanted);

    /// Calls `slot` with the identifier after a reminder was booked, changed, delivered or removed.
    Connection observe(std::function<void(const std::string&)> slot) {
        return changed_.connect(std::move(slot));
    }

private:
    /// False if the reminder cannot be kept; then nothing has changed.
    bool put(const BookedReminder& reminder);
    void erase(const std::string& identifier);
    void write(const std::set<std::string>& changed);

    Preferences& preferences_;
    BookedReminders reminders_;
    std::map<std::string, std::string> encoded_; ///< of each reminder: a write joins them
    std::size_t size_ = 2;                       ///< the most bytes that the stored form takes
    Signal<const std::string&> changed_;
};

} // namespace quillo
