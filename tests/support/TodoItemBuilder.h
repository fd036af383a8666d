/// Tasks for tests, said in one line: Task("Buy milk").due({100}).done({200}).
#pragma once

#include "model/TodoItem.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quillo::support {

/// The identifier whose bytes are zero but for the last four, which count.
inline Uuid numberedId(std::uint32_t number) {
    Uuid id;
    for (std::size_t place = 0; place < 4; ++place)
        id.bytes[15 - place] = static_cast<std::uint8_t>(number >> (8 * place));
    return id;
}

/// An open task with a random id, made at the start of 2001, unless told otherwise.
class Task {
public:
    explicit Task(std::string title) {
        item_.id = Uuid::random();
        item_.title = std::move(title);
    }

    Task& id(Uuid id) { return item_.id = id, *this; }
    Task& made(Instant at) { return item_.createdAt = at, *this; }
    Task& due(Instant at) { return item_.dueDate = at, *this; }
    Task& done(Instant at = {60}) { return item_.isDone = true, item_.completedAt = at, *this; }
    Task& reminder(std::string identifier) { return item_.notificationID = std::move(identifier), *this; }

    operator TodoItem() const { return item_; }

private:
    TodoItem item_;
};

/// `count` open tasks with the ids and titles 0, 1, 2, ...
inline std::vector<TodoItem> numberedTasks(std::uint32_t count) {
    std::vector<TodoItem> items;
    for (std::uint32_t number = 0; number < count; ++number)
        items.push_back(Task(std::to_string(number)).id(numberedId(number)));
    return items;
}

template <class Items>
std::vector<std::string> titles(const Items& items) {
    std::vector<std::string> all;
    for (const TodoItem& item : items)
        all.push_back(item.title);
    return all;
}

} // namespace quillo::support
