/// One task.
#pragma once

#include "base/Instant.h"
#include "base/Uuid.h"

#include <optional>
#include <string>

namespace quillo {

/// A value, compared field by field. Two records with the same id denote the same task, equal or not.
struct TodoItem {
    Uuid id;           ///< created once, never changed; lists and rows key on it
    std::string title; ///< UTF-8, already cleaned of date words
    bool isDone = false;
    std::optional<Instant> dueDate; ///< absent for a task without date
    Instant createdAt;
    std::optional<Instant> completedAt;        ///< set on completion, cleared on un-completing
    std::optional<std::string> notificationID; ///< the reminder scheduled for this task, if one was

    friend bool operator==(const TodoItem&, const TodoItem&) = default;
};

} // namespace quillo
