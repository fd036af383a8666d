/// The one way from typed text to a kept task, whichever front end it was typed into.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "entry/Place.h"
#include "parser/ParserService.h"
#include "reminders/NotificationManager.h"
#include "store/TodoStore.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace quillo {

/// A typed text that was understood already.
struct UnderstoodText {
    ParsedTask meaning;
    Instant typedAt;
};

/// Belongs to the main thread. Texts do not wait for each other: one about which a language model has to
/// think may come onto the list after one that was typed later.
class AddTask {
public:
    /// Told the task when it is on the list, or that a blank text made none.
    using Added = std::function<void(const std::optional<TodoItem>&)>;

    /// All three must outlive it.
    AddTask(const Clock& clock, TodoStore& store, NotificationManager& reminders)
        : clock_(clock), store_(store), reminders_(reminders) {}

    /// Understands the text as typed now at the place, sees to the reminder of a task with a due date, and
    /// then puts the task on top of the list. Where a language model has to be asked, or the user for the
    /// permission to remind, the task waits for the answer; otherwise it is on the list when the call
    /// returns. Calls `added` once, and never after this is gone.
    void add(
        std::string_view text, const std::shared_ptr<const Place>& place,
        Added added = [](const std::optional<TodoItem>&) {});

    /// The same for a text that nobody has to be asked about any more.
    void add(const UnderstoodText& text, Added added);

    /// Puts the tasks that still wait on the list, in the order in which they were typed, as if no model
    /// answered and without reminders. What is answered later is too late.
    void addWaiting();

private:
    /// A typed text on its way to the list.
    struct Entry {
        TodoItem task; ///< as far as it is known
        Added added;
        std::unique_ptr<PendingParse> parse; ///< while a model thinks
    };

    std::shared_ptr<Entry> begin(Instant typedAt, Added added);
    void understood(const std::shared_ptr<Entry>& entry, const ParsedTask& parsed);
    void keep(const std::shared_ptr<Entry>& entry);

    const Clock& clock_;
    TodoStore& store_;
    NotificationManager& reminders_;
    std::vector<std::shared_ptr<Entry>> waiting_; ///< in the order in which they were typed
    CallbackScope scope_;
};

} // namespace quillo
