#include "entry/AddTask.h"

namespace quillo {

std::optional<TodoItem> AddTask::add(std::string_view text, const ParserService& parser) {
    const Instant now = clock_.now();
    ParsedTask parsed = parser.parse(text, now).task;
    if (parsed.title.empty())
        return std::nullopt;
    const auto task = std::make_shared<TodoItem>();
    task->id = Uuid::random();
    task->title = std::move(parsed.title);
    task->dueDate = parsed.dueDate;
    task->createdAt = now;

    waiting_.push_back(task);
    if (task->dueDate) {
        reminders_.schedule(*task, scope_.guard([this, task](std::optional<std::string> identifier) {
            task->notificationID = std::move(identifier);
            keep(task);
        }));
    } else {
        keep(task);
    }
    return *task;
}

void AddTask::addWaiting() {
    while (!waiting_.empty())
        keep(std::shared_ptr(waiting_.front()));
}

/// Puts the task on the list, unless it is there.
void AddTask::keep(const std::shared_ptr<TodoItem>& task) {
    if (std::erase(waiting_, task) > 0)
        store_.add(*task);
}

} // namespace quillo
