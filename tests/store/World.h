/// A store's surroundings, all in memory.
#pragma once

#include "base/NotificationCenter.h"
#include "model/TodoItemJson.h"
#include "store/TodoStore.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace quillo::support {

/// A cloud store in which synchronize() can be made to wait, and with it the store's queue.
class HoldingCloudStore : public InMemoryCloudStore {
public:
    void synchronize() override {
        std::unique_lock lock(mutex_);
        ++waiting_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return !held_; });
        --waiting_;
        InMemoryCloudStore::synchronize();
    }

    void hold() {
        const std::lock_guard lock(mutex_);
        held_ = true;
    }
    void waitUntilHolding() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return waiting_ > 0; });
    }
    void release() {
        const std::lock_guard lock(mutex_);
        held_ = false;
        changed_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool held_ = false;
    int waiting_ = 0;
};

struct World {
    InMemoryPreferences preferences;
    HoldingCloudStore cloud;
    RecordingReminderCenter reminders;
    FixedClock clock;
    NotificationCenter notifications;

    TodoStoreDependencies dependencies(Backups* backups = nullptr) {
        return {preferences, cloud, reminders, clock, notifications, backups};
    }

    /// Puts a list where a store will find it.
    void keep(const std::vector<TodoItem>& items, double stamp) {
        preferences.apply({{std::string(preference_keys::items), Data(*encodeStoredItems(items))},
                           {std::string(preference_keys::itemsStamp), stamp}});
    }

    /// What is stored now, or nothing if that is no list.
    static std::optional<std::vector<TodoItem>> listIn(const KeyValueStore& store) {
        const auto data = store.data(preference_keys::items);
        return data ? decodeStoredItems(data->bytes()) : std::nullopt;
    }
};

inline std::vector<TodoItem> contents(const TaskList& list) {
    return {list.begin(), list.end()};
}

} // namespace quillo::support
