/// In-memory twin of the login item: answers when the test says so.
#pragma once

#include "ports/LoginItem.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace quillo::support {

class ManualLoginItem : public LoginItem {
public:
    void read(std::function<void(std::optional<bool>)> answer) override {
        waiting_.push_back([this, answer = std::move(answer)] { answer(state); });
    }

    void change(bool startsAtLogin, std::function<void(Outcome)> answer) override {
        changes.push_back(startsAtLogin);
        waiting_.push_back([this, startsAtLogin, answer = std::move(answer)] {
            if (failing)
                return answer(Error{"the test says so"});
            state = startsAtLogin;
            answer(success());
        });
    }

    /// Answers what waits for an answer.
    void answer() {
        for (const auto& give : std::exchange(waiting_, {}))
            give();
    }

    std::optional<bool> state = false; ///< absent: the desktop does not tell
    bool failing = false;              ///< else every change succeeds
    std::vector<bool> changes;         ///< that were asked for

private:
    std::vector<std::function<void()>> waiting_;
};

} // namespace quillo::support
