#include "reminders/ReminderDelivery.h"

#include "reminders/TaskReminder.h"

#include <algorithm>

namespace quillo {

namespace {

/// A reminder is in time as long as the clock shows its minute.
constexpr double lateAfter = 60;

} // namespace

ReminderDelivery::ReminderDelivery(ReminderDeliveryDependencies dependencies)
    : with_(std::move(dependencies)) {
    connections_.push_back(with_.book.observe([this](const std::string& identifier) {
        follow(identifier);
        rearm();
    }));
    connections_.push_back(with_.timer.fired.connect([this] {
        armed_.reset();
        deliver();
        rearm();
    }));
    connections_.push_back(with_.timer.clockChanged.connect([this] {
        armed_.reset();
        failed_.clear();
        rearm();
    }));
    connections_.push_back(with_.presenter.becameAvailable.connect([this] {
        failed_.clear();
        rearm();
    }));
    calendarChanged();
}

ReminderDelivery::~ReminderDelivery() {
    with_.timer.disarm();
}

void ReminderDelivery::calendarChanged() {
    for (const auto& [identifier, reminder] : with_.book.reminders())
        follow(identifier);
    rearm();
}

/// Notes when the reminder is due, or that it no longer is.
void ReminderDelivery::follow(const std::string& identifier) {
    if (const auto known = instants_.find(identifier); known != instants_.end()) {
        schedule_.erase({known->second, identifier});
        instants_.erase(known);
    }
    failed_.erase(identifier);
    const BookedReminder* booked = with_.book.find(identifier);
    if (!booked || booked->delivered)
        return;
    const Instant at = startOf(booked->request.at, with_.calendar);
    instants_.emplace(identifier, at);
    schedule_.emplace(at, identifier);
}

/// Has the timer wait for the next reminder that can be shown.
void ReminderDelivery::rearm() {
    const auto next = std::find_if(schedule_.begin(), schedule_.end(), [this](const auto& entry) {
        return !onTheirWay_.contains(entry.second) && !failed_.contains(entry.second);
    });
    const std::optional<Instant> at = next == schedule_.end() ? std::nullopt : std::optional(next->first);
    if (at == armed_)
        return;
    armed_ = at;
    if (at)
        with_.timer.arm(*at);
    else
        with_.timer.disarm();
}

void ReminderDelivery::deliver() {
    const Instant now = with_.clock.now();
    const std::vector<Due> due = takeDue(now);
    const auto firstInTime = std::find_if(
        due.begin(), due.end(), [now](const Due& reminder) { return now - reminder.at < lateAfter; });
    const auto late = static_cast<std::size_t>(firstInTime - due.begin());
    const std::size_t shared = late > mostLate ? late - mostLate : 0;

    for (std::size_t index = shared; index < due.size(); ++index)
        show(due[index].request.identifier, due[index].request.content, {due[index].request});
    if (shared == 0)
        return;
    std::vector<ReminderRequest> others;
    for (std::size_t index = 0; index < shared; ++index)
        others.push_back(due[index].request);
    NotificationContent content = others.back().content;
    content.body = with_.moreText(shared);
    show(moreIdentifier, content, std::move(others));
}

/// What is due and not on its way yet, in order; from now on it is.
std::vector<ReminderDelivery::Due> ReminderDelivery::takeDue(Instant now) {
    std::vector<Due> due;
    for (const auto& [at, identifier] : schedule_) {
        if (at > now)
            break;
        if (onTheirWay_.insert(identifier).second)
            due.push_back({at, with_.book.find(identifier)->request});
    }
    for (const Due& reminder : due)
        failed_.erase(reminder.request.identifier);
    return due;
}

void ReminderDelivery::show(const std::string& identifier, const NotificationContent& content,
                            std::vector<ReminderRequest> requests) {
    with_.presenter.show(identifier, content,
                         scope_.guard([this, requests = std::move(requests)](bool delivered) {
                             answered(requests, delivered);
                         }));
}

void ReminderDelivery::answered(const std::vector<ReminderRequest>& requests, bool delivered) {
    for (const ReminderRequest& request : requests) {
        onTheirWay_.erase(request.identifier);
        const BookedReminder* booked = with_.book.find(request.identifier);
        if (!delivered && booked && booked->request == request)
            failed_.insert(request.identifier);
    }
    if (delivered)
        with_.book.markDelivered(requests);
    rearm();
}

} // namespace quillo
