/// The owner of the task list.
#pragma once

#include "base/Clock.h"
#include "base/Executor.h"
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
#include <memory>
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
    Executor& mainExecutor; ///< runs on the main thread; where lists from other machines arrive
    Backups* backups =
        nullptr; ///< keeps what is about to be removed or overwritten; without it nothing is kept
};

/// One a process, for the whole run. New tasks stand on top and nothing ever sorts, moves or regroups them,
/// so the list is newest first. Every change ends in a save in the background, which it does not wait for.
///
/// Between machines the whole list of the later change wins: a list from the cloud store is accepted if its
/// stamp is greater than that of the list in memory, once when it is read and once more when it arrives on
/// the main thread, as something may have changed here in between. Accepting makes no new stamp and writes
/// nothing back to the cloud store.
///
/// Once the queue is empty, the preferences hold the list in memory and its stamp (as far as that list can be
/// written at all). For they are written by queued tasks only, and those are queued on the main thread, in
/// the order in which the list changes. That is why a list from elsewhere is not written when it is found,
/// but when it is accepted: it could otherwise be the last word there and not in memory, or the other way
/// round.
///
/// Belongs to the main thread. Tasks are addressed by id; of equal ids the first in the list counts, and an
/// id that is not in the list makes an operation do nothing at all.
class TodoStore {
public:
    /// What is called when a task is completed: with the task as it is then, and the moment of completion.
    using CompletionListener = std::function<void(const TodoItem&, Instant)>;

    /// Loads the stored list, pulls from the cloud store if sync is on, follows its changes from then on, and
    /// asks it to synchronize.
    explicit TodoStore(const TodoStoreDependencies& dependencies);

    /// The stored list could not be read: the one in memory began empty.
    bool beganDamaged() const { return beganDamaged_; }

    const TaskList& items() const { return items_; }
    std::optional<std::size_t> indexOf(const Uuid& id) const { return items_.indexOf(id); }

    /// Together as many as there are items, once both have announced a change.
    const Observable<std::int64_t>& activeCount() const { return activeCount_; }
    const Observable<std::int64_t>& doneCount() const { return doneCount_; }

    /// When the list in memory came about, in seconds since 1970: at the last change here, or as stored or
    /// received with it; 0 for none.
    const Observable<double>& lastLocalStamp() const { return lastLocalStamp_; }

    /// Calls `slot` after every change of the list, before the counts follow.
    Connection observeList(Signal<const ListChange&>::Slot slot) {
        return listChanged_.connect(std::move(slot));
    }

    /// Calls `slot` after a list from another machine was accepted, or an earlier one brought back, when
    /// everything here has followed it; also where it holds the same tasks as the one before. Reminders are
    /// the caller's business.
    Connection observeAcceptedList(Signal<>::Slot slot) { return listAccepted_.connect(std::move(slot)); }

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

    /// Tells when the earlier lists were kept, the latest first.
    void listEarlier(std::function<void(const std::vector<UtcMilliseconds>&)> told);

    /// Accepts the list in the cloud store if it is newer than the one in memory: reads it in the background,
    /// and takes it over when the main executor runs.
    void pullFromCloud();

    /// Writes list and stamp as they are to the cloud store, in the background: for when sync is turned on.
    void pushToCloud();

    /// Has the list in memory go on in the place of one that is kept elsewhere, or that one in its place,
    /// whichever was changed later: for when the user says which. The other is kept among the earlier lists.
    /// What goes on has the later stamp.
    void prefer(const StampedList& other);
    void takeInstead(const ReceivedList& other);

    /// Keeps a list that was found elsewhere among the earlier ones, in the background; calls `done` when the
    /// main executor runs: with an error if it could not be kept. Not at all once this is gone.
    void keepAmongEarlier(TaskList list, std::function<void(Outcome)> done);

    /// Brings back a kept earlier list (Backups::list; 1 is the latest) in the place of the one in memory,
    /// which is kept in turn. Reads it in the background; calls `done` when the main executor runs, with an
    /// error in words for the user if there is no such list or it cannot be read; not at all once this is
    /// gone.
    void restoreEarlier(std::size_t which, std::function<void(Outcome)> done);

    /// Calls `told` once, from the persistence queue, when everything saved before the call has been handed
    /// to the preferences and the cloud store: with an error as drain() has it.
    void whenSaved(std::function<void(Outcome)> told);

    /// Returns when everything saved before the call has been handed to the preferences and the cloud store,
    /// and what was pulled before to the main executor. An error, in words for the user, if the last save
    /// could not be.
    Outcome drain();

private:
    void removeReminder(const TodoItem& item);
    void recount();
    void persist(double after = 0);
    bool syncIsOn() const;
    void accept(const ReceivedList& received);
    void replaceAll(TaskList items, double after = 0);
    void keepEarlier(TaskList earlier);
    void announce(ListChange::Kind kind, std::size_t index = 0);

    const TodoStoreDependencies with_;
    TaskList items_;
    bool beganDamaged_ = false;
    Observable<std::int64_t> activeCount_;
    Observable<std::int64_t> doneCount_;
    Observable<double> lastLocalStamp_;
    Signal<const ListChange&> listChanged_;
    Signal<> listAccepted_;
    std::vector<CompletionListener> completionListeners_;
    Connection cloudChange_;
    std::shared_ptr<TodoStore> self_{this, [](TodoStore*) {}}; ///< for weak references, which end with it
    ListPersistence persistence_;                              ///< once loaded, the queue's alone
    SerialQueue queue_{
        "Quillo.TodoStore.persist"}; ///< last, so that it is drained before what it works on goes
};

} // namespace quillo
