/// In-memory twin of the reminder port: remembers what was asked of it, answers what it is told to.
#pragma once

#include "ports/ReminderCenter.h"

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillo::support {

class RecordingReminderCenter : public ReminderCenter {
public:
    void authorizationStatus(std::function<void(ReminderAuthorization)> answer) override {
        perform([this, answer = std::move(answer)] {
            ++statusQueries;
            answer(status);
        });
    }

    void requestAuthorization(unsigned options, std::function<void(Result<bool>)> answer) override {
        perform([this, options, answer = std::move(answer)] {
            requestedOptions.push_back(options);
            answer(userAnswer);
        });
    }

    void add(ReminderRequest request, std::function<void(Outcome)> answer) override {
        perform([this, request = std::move(request), answer = std::move(answer)] {
            if (addOutcome)
                pending.insert_or_assign(request.identifier, request);
            answer(addOutcome);
        });
    }

    void removePending(const std::string& identifier) override {
        removed.push_back(identifier);
        perform([this, identifier] { pending.erase(identifier); });
    }

    /// What is asked from now on waits for step().
    void hold() { holding_ = true; }

    /// Does the first thing that waits. False if nothing does.
    bool step() {
        if (held_.empty())
            return false;
        const auto first = std::move(held_.front());
        held_.pop_front();
        first();
        return true;
    }

    ReminderAuthorization status = ReminderAuthorization::authorized;
    Result<bool> userAnswer = true;
    Outcome addOutcome = success();

    int statusQueries = 0;
    std::vector<unsigned> requestedOptions;
    std::map<std::string, ReminderRequest> pending;
    std::vector<std::string> removed;

private:
    void perform(std::function<void()> action) {
        if (holding_)
            held_.push_back(std::move(action));
        else
            action();
    }

    bool holding_ = false;
    std::deque<std::function<void()>> held_;
};

} // namespace quillo::support
