/// A store's surroundings, all in memory.
#pragma once

#include "base/ManualExecutor.h"
#include "base/NotificationCenter.h"
#include "model/TodoItemJson.h"
#include "store/TodoStore.h"
#include "support/FixedClock.h"
#include "support/Gate.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"

#include <optional>
#include <string>
#include <vector>

namespace quillo::support {

/// A cloud store in which synchronize() can be made to wait, and with it the store's queue.
class HoldingCloudStore : public InMemoryCloudStore {
public:
    void synchronize() override {
        gate_.pass();
        InMemoryCloudStore::synchronize();
    }

    void hold() { gate_.close(); }
    void waitUntilHolding() { gate_.waitForArrival(); }
    void release() { gate_.open(); }

private:
    Gate gate_;
};

struct World {
    InMemoryPreferences preferences;
    HoldingCloudStore cloud;
    RecordingReminderCenter reminders;
    FixedClock clock;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;

    TodoStoreDependencies dependencies(Backups* backups = nullptr) {
        return {preferences, cloud, reminders, clock, notifications, mainExecutor, backups};
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
