#include "reminders/ReminderBook.h"

#include "base/Log.h"

#include <utility>

namespace quillo {

ReminderBook::ReminderBook(Preferences& preferences) : preferences_(preferences) {
    const std::optional<Data> stored = preferences_.data(preference_keys::reminders);
    if (!stored)
        return;
    const std::optional<DecodedReminderBook> book = decodeReminderBook(stored->bytes());
    if (!book) {
        log("the book of reminders cannot be read");
        return;
    }
    if (book->skipped > 0)
        log("entries in the book of reminders that cannot be read: " + std::to_string(book->skipped));
    for (const auto& [identifier, reminder] : book->reminders)
        put(reminder);
}

const BookedReminder* ReminderBook::find(std::string_view identifier) const {
    const auto found = reminders_.find(identifier);
    return found == reminders_.end() ? nullptr : &found->second;
}

void ReminderBook::authorizationStatus(std::function<void(ReminderAuthorization)> answer) {
    answer(ReminderAuthorization::authorized);
}

void ReminderBook::requestAuthorization(unsigned /*options*/, std::function<void(Result<bool>)> answer) {
    answer(true);
}

void ReminderBook::add(ReminderRequest request, std::function<void(Outcome)> answer) {
    const BookedReminder reminder{std::move(request)};
    const std::string& identifier = reminder.request.identifier;
    const BookedReminder* booked = find(identifier);
    if (!booked || *booked != reminder) {
        if (!put(reminder)) {
            answer(Error{"the reminder cannot be kept"});
            return;
        }
        write({identifier});
    }
    answer(success());
}

void ReminderBook::removePending(const std::string& identifier) {
    if (!find(identifier))
        return;
    const std::set<std::string> removed{identifier}; // A copy: it may lie in what goes.
    erase(*removed.begin());
    write(removed);
}

void ReminderBook::markDelivered(const std::vector<ReminderRequest>& shown) {
    std::set<std::string> changed;
    for (const ReminderRequest& request : shown) {
        const BookedReminder* booked = find(request.identifier);
        // Its words may have changed since; it is the date that makes it another one.
        if (!booked || booked->delivered || booked->request.at != request.at ||
            booked->request.dueDate != request.dueDate)
            continue;
        BookedReminder delivered = *booked;
        delivered.delivered = true;
        if (put(delivered))
            changed.insert(request.identifier);
    }
    write(changed);
}

void ReminderBook::replaceAll(const BookedReminders& wanted) {
    std::set<std::string> changed;
    for (const auto& [identifier, reminder] : reminders_) {
        if (!wanted.contains(identifier))
            changed.insert(identifier);
    }
    for (const std::string& identifier : changed)
        erase(identifier);
    for (const auto& [identifier, reminder] : wanted) {
        const BookedReminder* booked = find(identifier);
        if ((!booked || *booked != reminder) && put(reminder))
            changed.insert(identifier);
    }
    write(changed);
}

bool ReminderBook::put(const BookedReminder& reminder) {
    const std::optional<std::string> encoded = encodeBookedReminder(reminder);
    if (!encoded)
        return false;
    const std::string& identifier = reminder.request.identifier;
    const auto before = encoded_.find(identifier);
    const std::size_t size =
        size_ + encoded->size() + 1 - (before == encoded_.end() ? 0 : before->second.size() + 1);
    if (size > largestReminderBook)
        return false;
    size_ = size;
    encoded_.insert_or_assign(identifier, *encoded);
    reminders_.insert_or_assign(identifier, reminder);
    return true;
}

void ReminderBook::erase(const std::string& identifier) {
    const auto encoded = encoded_.find(identifier);
    size_ -= encoded->second.size() + 1;
    encoded_.erase(encoded);
    reminders_.erase(identifier);
}

/// Writes the book and announces what changed in it; nothing where nothing did.
void ReminderBook::write(const std::set<std::string>& changed) {
    if (changed.empty())
        return;
    if (encoded_.empty()) {
        preferences_.remove(preference_keys::reminders);
    } else {
        std::string bytes;
        bytes.reserve(size_);
        for (const auto& [identifier, encoded] : encoded_)
            bytes.append(bytes.empty() ? "[" : ",").append(encoded);
        preferences_.set(preference_keys::reminders, Data(std::move(bytes.append("]"))));
    }
    for (const std::string& identifier : changed)
        changed_.emit(identifier);
}

} // namespace quillo
