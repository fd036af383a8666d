/// In-memory twin of the notification presenter: a desktop that can be away or slow.
#pragma once

#include "ports/NotificationPresenter.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace quillo::support {

class RecordingPresenter : public NotificationPresenter {
public:
    struct Shown {
        std::string identifier;
        NotificationContent content;
    };

    void show(const std::string& identifier, const NotificationContent& content, Answer answer) override {
        tried.push_back({identifier, content});
        waiting_.push_back({{identifier, content}, std::move(answer)});
        if (!holding)
            answerAll();
    }

    /// Answers what waits for an answer.
    void answerAll() {
        while (!waiting_.empty()) {
            const auto [notification, answer] = std::move(waiting_.front());
            waiting_.pop_front();
            if (available)
                shown.push_back(notification);
            answer(available);
        }
    }

    std::size_t waiting() const { return waiting_.size(); }

    bool available = true; ///< else nothing is taken
    bool holding = false;  ///< else every notification is answered at once
    std::vector<Shown> tried;
    std::vector<Shown> shown; ///< those of them that were taken

private:
    struct Waiting {
        Shown notification;
        Answer answer;
    };
    std::deque<Waiting> waiting_;
};

} // namespace quillo::support
