/// A task list and what lies behind it, all in memory.
#pragma once

#include "base/ManualExecutor.h"
#include "base/NotificationCenter.h"
#include "entry/SetReminder.h"
#include "model/TodoItemJson.h"
#include "reminders/NotificationManager.h"
#include "store/TodoStore.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"
#include "support/TodoItemBuilder.h"
#include "unicode/CivilCalendar.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo::support {

struct ListWorld {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    FixedClock clock; ///< 2025-03-04, 10:41 in Berlin
    InMemoryPreferences preferences;
    InMemoryCloudStore cloud;
    RecordingReminderCenter reminders;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    TodoStore store{{preferences, cloud, reminders, clock, notifications, mainExecutor}};
    NotificationManager manager{reminders, clock, calendar};
    SetReminder setReminder{store, reminders, manager};

    /// Puts these tasks into the list, the first on top.
    void add(const std::vector<TodoItem>& items) {
        for (auto item = items.rbegin(); item != items.rend(); ++item)
            store.add(*item);
    }

    /// What happens when another machine has sent this list.
    void receive(const std::vector<TodoItem>& items) {
        EXPECT_TRUE(store.drain()); // What it writes itself is there before.
        cloud.apply({{std::string(preference_keys::items), Data(*encodeStoredItems(items))},
                     {std::string(preference_keys::itemsStamp), clock.now().unixSeconds() + ++received_}});
        store.pullFromCloud();
        EXPECT_TRUE(store.drain());
        mainExecutor.run();
    }

    const TodoItem& task(const Uuid& id) const { return store.items()[store.indexOf(id).value()]; }

private:
    double received_ = 0;
};

} // namespace quillo::support
