#include "store/TodoStore.h"

#include <cmath>
#include <limits>
#include <utility>

namespace quillo {

TodoStore::TodoStore(const TodoStoreDependencies& dependencies)
    : with_(dependencies), persistence_(with_.preferences, with_.cloud, with_.backups) {
    StampedList stored = persistence_.load();
    beganDamaged_ = persistence_.foundDamaged();
    items_ = std::move(stored.items);
    lastLocalStamp_.set(stored.stamp);
    recount();
    if (syncIsOn())
        pullFromCloud();
    cloudChange_ = with_.cloud.externalChange.connect([this] {
        if (syncIsOn())
            pullFromCloud();
    });
    queue_.post([&persistence = persistence_] { persistence.synchronizeCloud(); });
}

void TodoStore::addCompletionListener(CompletionListener listener) {
    completionListeners_.push_back(std::move(listener));
}

void TodoStore::add(TodoItem item) {
    items_.pushFront(std::move(item));
    announce(ListChange::Kind::inserted);
    persist();
}

void TodoStore::toggle(const Uuid& id) {
    const auto index = items_.indexOf(id);
    if (!index)
        return;
    const std::int64_t activeBefore = activeCount_.get();
    TodoItem item = items_[*index];
    item.isDone = !item.isDone;
    if (item.isDone) {
        item.completedAt = with_.clock.now();
        removeReminder(item);
    } else {
        item.completedAt.reset();
    }
    items_.replace(*index, item);
    announce(ListChange::Kind::replaced, *index);
    persist();

    if (!item.isDone)
        return;
    if (activeBefore >= 1 && activeCount_.get() == 0)
        with_.notifications.post(notifications::inboxZero);
    for (std::size_t index = 0; index < completionListeners_.size(); ++index) // One may add another.
        completionListeners_[index](item, *item.completedAt);
}

void TodoStore::update(TodoItem item) {
    const auto index = items_.indexOf(item.id);
    if (!index)
        return;
    items_.replace(*index, std::move(item));
    announce(ListChange::Kind::replaced, *index);
    persist();
}

void TodoStore::remove(const Uuid& id) {
    const auto index = items_.indexOf(id);
    if (!index)
        return;
    TaskList earlier = items_;
    removeReminder(earlier[*index]);
    items_.remove(*index);
    keepEarlier(std::move(earlier));
    announce(ListChange::Kind::removed, *index);
    persist();
}

std::size_t TodoStore::clearCompleted() {
    const std::size_t count = items_.doneCount();
    if (count > 0) {
        TaskList earlier = items_;
        for (const TodoItem& item : earlier) {
            if (item.isDone)
                removeReminder(item);
        }
        items_.removeDone();
        keepEarlier(std::move(earlier));
        announce(ListChange::Kind::reset);
    }
    persist();
    return count;
}

void TodoStore::pullFromCloud() {
    queue_.post([&persistence = persistence_, &mainExecutor = with_.mainExecutor,
                 local = StampedList{items_, lastLocalStamp_.get()}, self = std::weak_ptr(self_)] {
        if (auto received = persistence.newerInCloud(local)) {
            mainExecutor.post([self, received = *std::move(received)] {
                if (const auto store = self.lock())
                    store->accept(received);
            });
        }
    });
}

void TodoStore::pushToCloud() {
    queue_.post([&persistence = persistence_, list = StampedList{items_, lastLocalStamp_.get()}] {
        persistence.push(list);
    });
}

void TodoStore::prefer(const StampedList& other) {
    if (!other.items.empty() && other.items != items_)
        keepEarlier(other.items);
    if (lastLocalStamp_.get() <= other.stamp)
        persist(other.stamp);
}

void TodoStore::takeInstead(const ReceivedList& other) {
    if (lastLocalStamp_.get() < other.list.stamp)
        accept(other);
    else
        replaceAll(other.list.items, lastLocalStamp_.get());
}

void TodoStore::keepAmongEarlier(TaskList list, std::function<void(Outcome)> done) {
    queue_.post([&persistence = persistence_, &mainExecutor = with_.mainExecutor, self = std::weak_ptr(self_),
                 list = std::move(list), done = std::move(done)] {
        mainExecutor.post([self, done, kept = persistence.keepEarlier(list)] {
            if (!self.expired())
                done(kept ? success() : Outcome(Error{"the list could not be kept among the earlier ones"}));
        });
    });
}

void TodoStore::listEarlier(std::function<void(const std::vector<UtcMilliseconds>&)> told) {
    queue_.post([&persistence = persistence_, &mainExecutor = with_.mainExecutor, told = std::move(told)] {
        mainExecutor.post([told, times = persistence.earlierTimes()] { told(times); });
    });
}

void TodoStore::restoreEarlier(std::size_t which, std::function<void(Outcome)> done) {
    queue_.post([&persistence = persistence_, &mainExecutor = with_.mainExecutor, self = std::weak_ptr(self_),
                 which, done = std::move(done)] {
        mainExecutor.post([self, done, earlier = persistence.earlier(which)] {
            const auto store = self.lock();
            if (!store)
                return;
            if (earlier)
                store->replaceAll(*earlier);
            done(earlier ? success() : Outcome(earlier.error()));
        });
    });
}

void TodoStore::replaceAll(TaskList items, double after) {
    TaskList earlier = std::exchange(items_, std::move(items));
    if (!earlier.empty())
        keepEarlier(std::move(earlier));
    announce(ListChange::Kind::reset);
    persist(after);
    listAccepted_.emit();
}

void TodoStore::whenSaved(std::function<void(Outcome)> told) {
    queue_.post([&persistence = persistence_, told = std::move(told)] { told(persistence.lastSave()); });
}

Outcome TodoStore::drain() {
    queue_.drain();
    return persistence_.lastSave();
}

void TodoStore::removeReminder(const TodoItem& item) {
    if (item.notificationID)
        with_.reminders.removePending(*item.notificationID);
}

void TodoStore::recount() {
    doneCount_.set(static_cast<std::int64_t>(items_.doneCount()));
    activeCount_.set(static_cast<std::int64_t>(items_.size() - items_.doneCount()));
}

/// The stamp is that of now, unless it has to come after another one and the clock is behind that.
void TodoStore::persist(double after) {
    recount();
    const double now = with_.clock.now().unixSeconds();
    lastLocalStamp_.set(
        after < now || after == 0 ? now : std::nextafter(after, std::numeric_limits<double>::infinity()));
    const bool toCloud = syncIsOn();
    // Of saves that wait one behind the other only the last one matters, unless some go to the cloud and
    // others do not.
    const SerialQueue::ReplaceableKind kind = toCloud ? 2 : 1;
    queue_.postReplacing(kind,
                         [&persistence = persistence_, list = StampedList{items_, lastLocalStamp_.get()},
                          toCloud] { persistence.save(list, toCloud); });
}

bool TodoStore::syncIsOn() const {
    return with_.preferences.boolean(preference_keys::cloudSync).value_or(true);
}

void TodoStore::accept(const ReceivedList& received) {
    if (!(lastLocalStamp_.get() < received.list.stamp))
        return; // What was changed here, or accepted, since the list was read is as new or newer.
    const bool differs = items_ != received.list.items;
    TaskList earlier = std::exchange(items_, received.list.items);
    if (differs && !earlier.empty())
        keepEarlier(std::move(earlier));
    queue_.post([&persistence = persistence_, received] { persistence.adopt(received); });
    // Everything is queued and in place before others hear of it: they may change the list in turn.
    lastLocalStamp_.set(received.list.stamp);
    if (differs)
        announce(ListChange::Kind::reset);
    recount();
    listAccepted_.emit();
}

/// Backs the list up as it was. It arrives here as the last copy on this thread, so that letting go of what
/// only it held is the queue's work.
void TodoStore::keepEarlier(TaskList earlier) {
    queue_.post(
        [&persistence = persistence_, earlier = std::move(earlier)] { persistence.keepEarlier(earlier); });
}

void TodoStore::announce(ListChange::Kind kind, std::size_t index) {
    listChanged_.emit({kind, index});
}

} // namespace quillo
