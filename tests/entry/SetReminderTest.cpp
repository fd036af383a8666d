#include "entry/SetReminder.h"

#include "base/ManualExecutor.h"
#include "reminders/TaskReminder.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;

constexpr double hour = 3600;

struct SetReminderTest : testing::Test {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::RecordingReminderCenter center;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    TodoStore store{{preferences, cloud, center, clock, notifications, mainExecutor}};
    NotificationManager manager{center, clock, calendar};
    std::optional<SetReminder> setReminder{std::in_place, store, center, manager};

    const Uuid id = numberedId(1);
    const std::string identifier = reminderIdentifier(id);
    const Instant later = clock.now() + hour;
    const Instant muchLater = clock.now() + 24 * hour;

    const TodoItem& task() const { return store.items()[*store.indexOf(id)]; }
    void doAllThatWaits() {
        while (center.step()) {
        }
    }
};

TEST_F(SetReminderTest, SetsDateAndReminder) {
    store.add(Task("Call mom").id(id));
    setReminder->set(id, later);
    EXPECT_EQ(task().dueDate, later);
    EXPECT_EQ(task().notificationID, identifier);
    EXPECT_EQ(center.pending.at(identifier).dueDate, later);
    EXPECT_TRUE(center.removed.empty());
}

TEST_F(SetReminderTest, RemovesTheOldReminderFirst) {
    store.add(Task("Call mom").id(id));
    setReminder->set(id, later);
    setReminder->set(id, muchLater);
    EXPECT_EQ(center.removed, std::vector<std::string>{identifier});
    EXPECT_EQ(task().notificationID, identifier);
    EXPECT_EQ(center.pending.at(identifier).dueDate, muchLater);
}

TEST_F(SetReminderTest, ClearsDateAndReminder) {
    store.add(Task("Call mom").id(id));
    setReminder->set(id, later);
    setReminder->set(id, std::nullopt);
    EXPECT_EQ(task().dueDate, std::nullopt);
    EXPECT_EQ(task().notificationID, std::nullopt);
    EXPECT_TRUE(center.pending.empty());
}

TEST_F(SetReminderTest, AReminderThatIsNotToBeIsNotNoted) {
    store.add(Task("Call mom").id(id));
    setReminder->set(id, later);
    setReminder->set(id, clock.now());
    EXPECT_EQ(task().dueDate, clock.now());
    EXPECT_EQ(task().notificationID, std::nullopt);
    EXPECT_TRUE(center.pending.empty());

    center.status = ReminderAuthorization::denied;
    setReminder->set(id, later);
    EXPECT_EQ(task().dueDate, later);
    EXPECT_EQ(task().notificationID, std::nullopt);
}

TEST_F(SetReminderTest, ADoneTaskGetsADateOnly) {
    store.add(Task("Call mom").id(id).done());
    setReminder->set(id, later);
    EXPECT_EQ(task().dueDate, later);
    EXPECT_TRUE(center.pending.empty());
    EXPECT_EQ(center.statusQueries, 0);
}

TEST_F(SetReminderTest, DoesNothingForAnUnknownTask) {
    const double stamp = store.lastLocalStamp().get();
    setReminder->set(id, later);
    EXPECT_EQ(store.lastLocalStamp().get(), stamp);
    EXPECT_EQ(center.statusQueries, 0);
}

TEST_F(SetReminderTest, TheAnswerChangesOnlyTheIdentifier) {
    store.add(Task("Call mom").id(id));
    center.hold();
    setReminder->set(id, later);
    EXPECT_EQ(task().dueDate, later);
    EXPECT_EQ(task().notificationID, std::nullopt);
    TodoItem renamed = task();
    renamed.title = "Call dad";
    store.update(renamed);
    store.add(Task("above"));
    doAllThatWaits();
    renamed.notificationID = identifier;
    EXPECT_EQ(task(), renamed);
}

TEST_F(SetReminderTest, WhatIsNoLongerWantedIsUndone) {
    const std::vector<void (*)(SetReminderTest&)> changes = {
        [](SetReminderTest& test) { test.store.toggle(test.id); },
        [](SetReminderTest& test) { test.store.remove(test.id); },
        [](SetReminderTest& test) { test.setReminder->set(test.id, std::nullopt); },
        [](SetReminderTest& test) { test.setReminder->set(test.id, test.clock.now()); },
    };
    for (const auto& change : changes) {
        for (int stepsBefore = 0; stepsBefore < 2; ++stepsBefore) { // before its status, before it is added
            store.add(Task("Call mom").id(id));
            center.hold();
            setReminder->set(id, later);
            for (int step = 0; step < stepsBefore; ++step)
                ASSERT_TRUE(center.step());
            change(*this);
            doAllThatWaits();
            EXPECT_TRUE(center.pending.empty());
            if (const auto place = store.indexOf(id)) {
                EXPECT_EQ(store.items()[*place].notificationID, std::nullopt);
                store.remove(id);
            }
        }
    }
}

TEST_F(SetReminderTest, OfDatesInQuickSuccessionTheLastCounts) {
    for (int stepsBetween = 0; stepsBetween < 3; ++stepsBetween) {
        store.add(Task("Call mom").id(id));
        center.hold();
        setReminder->set(id, later);
        for (int step = 0; step < stepsBetween; ++step)
            center.step();
        setReminder->set(id, muchLater);
        doAllThatWaits();
        EXPECT_EQ(task().dueDate, muchLater);
        EXPECT_EQ(task().notificationID, identifier);
        EXPECT_EQ(center.pending.at(identifier).dueDate, muchLater);
        store.remove(id);
        doAllThatWaits();
        EXPECT_TRUE(center.pending.empty());
    }
}

TEST_F(SetReminderTest, NothingHappensOnceItIsGone) {
    store.add(Task("Call mom").id(id));
    center.hold();
    setReminder->set(id, later);
    setReminder.reset();
    doAllThatWaits();
    EXPECT_EQ(task().notificationID, std::nullopt);
}

} // namespace
} // namespace quillo
