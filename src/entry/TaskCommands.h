/// What can be asked of the list in words: the commands behind the command line.
///
/// A task is named by its number, its place in the whole list with the newest as 1, or by its identifier, of
/// which eight or more hexadecimal digits from the front will do where they fit one task only.
#pragma once

#include "base/Result.h"
#include "entry/AddTask.h"

#include <string_view>
#include <vector>

namespace quillo {

/// A task and its number.
struct NumberedItem {
    std::size_t number = 0; ///< its place in the whole list, from 1
    TodoItem item;
};

/// Belongs to the main thread. Errors are for the user's eyes.
class TaskCommands {
public:
    /// Both must outlive it.
    TaskCommands(AddTask& addTask, TodoStore& store) : addTask_(addTask), store_(store) {}

    Result<NumberedItem> add(std::string_view text);

    /// Makes the task done or not done. One that is so already is left alone.
    Result<NumberedItem> setDone(std::string_view task, bool done);

    /// Gives the task the trimmed text as its title, as it stands.
    Result<NumberedItem> edit(std::string_view task, std::string_view text);

    /// Removes the task; answers what it was.
    Result<NumberedItem> remove(std::string_view task);

    /// Removes all done tasks; answers which they were. Where there are none nothing is written.
    std::vector<TodoItem> clearCompleted();

private:
    Result<NumberedItem> find(std::string_view task) const;
    NumberedItem numbered(std::size_t index) const;

    AddTask& addTask_;
    TodoStore& store_;
};

} // namespace quillo
