/// What can be asked of the list in words: the commands behind the command line.
///
/// A task is named by its number, its place in the whole list with the newest as 1, or by its identifier, of
/// which eight or more hexadecimal digits from the front will do where they fit one task only.
#pragma once

#include "base/Clock.h"
#include "control/Answer.h"
#include "control/Request.h"
#include "entry/AddTask.h"
#include "entry/Place.h"
#include "entry/SetReminder.h"
#include "store/TodoStore.h"

#include <functional>
#include <string_view>

namespace quillo {

/// What the commands work with; all of it outlives them.
struct TaskCommandsDependencies {
    const Clock& clock;
    TodoStore& store;
    AddTask& addTask;
    SetReminder& setReminder;
};

/// Belongs to the main thread. Errors are for the user's eyes.
class TaskCommands {
public:
    using Reply = std::function<void(const control::Answer&)>;

    explicit TaskCommands(const TaskCommandsDependencies& dependencies) : with_(dependencies) {}

    /// Does what is asked and replies once with the tasks it was about: at once, except for `restore`, which
    /// waits for the disk. What was changed is in memory then and may still have to be saved.
    ///
    /// A task that is as it is to become is left alone. Where there is nothing to clear nothing is written.
    void answer(const control::Request& request, Reply reply);

private:
    control::Answer apply(const control::Add& add, const Place& place);
    control::Answer apply(const control::SetDone& set);
    control::Answer apply(const control::Edit& edit);
    control::Answer apply(const control::Delete& remove);
    control::Answer clearCompleted();
    control::Answer apply(const control::Remind& remind, const Place& place);

    Result<control::NumberedItem> find(std::string_view task) const;
    control::NumberedItem numbered(std::size_t index) const;

    const TaskCommandsDependencies with_;
    Places places_;
};

} // namespace quillo
