#include "entry/AddTask.h"

namespace quillo {

std::optional<TodoItem> AddTask::add(std::string_view text) {
    const Instant now = clock_.now();
    ParsedTask parsed = parser_.parse(text, now).task;
    if (parsed.title.empty())
        return std::nullopt;
    TodoItem item;
    item.id = Uuid::random();
    item.title = std::move(parsed.title);
    item.dueDate = parsed.dueDate;
    item.createdAt = now;
    store_.add(item);
    return item;
}

} // namespace quillo
