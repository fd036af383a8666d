/// The owner of the task list.
#pragma once

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/Observable.h"
#include "base/SerialQueue.h"
#include "base/Signal.h"
#include "model/TodoItem.h"
#include "ports/CloudStore.h"
#include "ports/Preferences.h"
#include "ports/ReminderCenter.h"
#include "store/ListPersistence.h"
#include "store/TaskList.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace quillo {

/// What happened to the list, told after it happened.
struct ListChange {
    enum class Kind {
        inserted, ///< the task now at `index` is new
        replaced, ///< the task at `index` has changed
        removed,  ///< the task that was at `index` is gone
        reset,    ///< the whole list may be another; `index` means nothing
    };
    Kind kind;
    std::size_t index = 0;

    friend bool operator==(const ListChange&, const ListChange&) = default;
};

/// What the store works with; all of it outlives the store.
struct TodoStoreDependencies {
    Preferences& preferences;
    CloudStore& cloud;
    ReminderCenter& reminders;
    const Clock& clock;
    NotificationCenter& notifications;
    Backups* backups =
        nullptr; ///< keeps what is about to be removed or overwritten; without it nothing is kept
};

/// One a process, for the whole run. New tasks stand on top and nothing ever sorts, moves or regroups them,
/// so the list is newest first. Every change ends in a save in the background, which it does not wait for.
///
/// Belongs to the main thread. Tasks are addressed by id; of equal ids the first in the list counts, and an
/// id that is not in the list makes an operation do nothing at all.
class TodoStore {
public:
    /// What is called when a task is completed: with the task as it is then, and the moment of completion.
    using CompletionListener = std::function<void(const TodoItem&, Instant)>;

    /// Loads the stored list, and asks the cloud store to synchronize.
    explicit TodoStore(const TodoStoreDependencies& dependencies);

    const TaskList& items() const { return items_; }
    std::optional<std::size_t> indexOf(const Uuid& id) const { return items_.indexOf(id); }

    /// Together as many as there are items, once both have announced a change.
    const Observable<std::int64_t>& activeCount() const { return activeCount_; }
    const Observable<std::int64_t>& doneCount() const { return doneCount_; }

    /// When the list in memory came about, in seconds since 1970: the last change here, or the stored one; 0
    /// for none.
    const Observable<double>& lastLocalStamp() const { return lastLocalStamp_; }

    /// Calls `slot` after every change of the list, before the counts follow.
    Connection observeList(Signal<const ListChange&>::Slot slot) {
        return listChanged_.connect(std::move(slot));
    }

    /// Listeners are called in the order in which they were added, after the event that announces an empty
    /// inbox.
    void addCompletionListener(CompletionListener listener);

    /// Puts a complete task on top. Its maker has made sure of its title and scheduled its reminder.
    void add(TodoItem item);

    /// Completes an open task (and removes its pending reminder), reopens a done one (and schedules none).
    void toggle(const Uuid& id);

    /// Puts `item` in the place of the task of that id. Reminders are the caller's business.
    void update(TodoItem item);

    /// Removes a task and its pending reminder.
    void remove(const Uuid& id);

    /// Removes all done tasks and their pending reminders, and returns how many there were.
    std::size_t clearCompleted();

    /// Returns when everything saved before the call has been handed to the preferences and the cloud store.
    /// An error, in words for the user, if the last save could not be.
    Outcome drain();

private:
    void removeReminder(const TodoItem& item);
    void recount();
    void persist();
    void keepEarlier(TaskList earlier);
    void announce(ListChange::Kind kind, std::size_t index = 0);

    const TodoStoreDependencies with_;
    TaskList items_;
    Observable<std::int64_t> activeCount_;
    Observable<std::int64_t> doneCount_;
    Observable<double> lastLocalStamp_;
    Signal<const ListChange&> listChanged_;
    std::vector<CompletionListener> completionListeners_;
    ListPersistence persistence_; ///< once loaded, the queue's alone
    SerialQueue queue_{
        "Quillo.TodoStore.persist"}; ///< last, so that it is drained before what it works on goes
};

} // namespace quillo
