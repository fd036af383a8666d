/// The one way from typed text to a kept task, whichever front end it was typed into.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "parser/ParserService.h"
#include "reminders/NotificationManager.h"
#include "store/TodoStore.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace quillo {

/// Belongs to the main thread.
class AddTask {
public:
    /// All three must outlive it.
    AddTask(const Clock& clock, TodoStore& store, NotificationManager& reminders)
        : clock_(clock), store_(store), reminders_(reminders) {}

    /// Understands the text as typed now where the parser is, sees to the reminder of a task with a due date,
    /// and then puts the task on top of the list. Returns the task; a blank text makes none. Where the
    /// reminder has to wait for the user's permission, so does the task; it is returned without reminder
    /// then.
    std::optional<TodoItem> add(std::string_view text, const ParserService& parser);

    /// Puts the tasks that still wait on the list, without reminders. What is answered later is too late.
    void addWaiting();

private:
    void keep(const std::shared_ptr<TodoItem>& task);

    const Clock& clock_;
    TodoStore& store_;
    NotificationManager& reminders_;
    std::vector<std::shared_ptr<TodoItem>> waiting_; ///< for their reminders, in the order they were typed
    CallbackScope scope_;
};

} // namespace quillo
