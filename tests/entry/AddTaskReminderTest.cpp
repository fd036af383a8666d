#include "base/ManualExecutor.h"
#include "entry/AddTask.h"
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

struct AddTaskReminderTest : testing::Test {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    std::shared_ptr<const Place> place = *Place::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::RecordingReminderCenter center;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    TodoStore store{{preferences, cloud, center, clock, notifications, mainExecutor}};
    NotificationManager manager{center, clock, calendar};
    std::optional<AddTask> addTask{std::in_place, clock, store, manager};

    /// The task that is on the list once this returns.
    std::optional<TodoItem> add(std::string_view text) {
        std::optional<TodoItem> added;
        addTask->add(text, place, [&](const std::optional<TodoItem>& item) { added = item; });
        EXPECT_TRUE(added);
        return added;
    }
    std::vector<std::string> titles() const { return support::titles(store.items()); }
};

TEST_F(AddTaskReminderTest, ATaskIsAddedWithItsReminder) {
    std::vector<bool> hadReminder;
    const Connection connection = store.observeList([&](const ListChange& change) {
        hadReminder.push_back(store.items()[change.index].notificationID.has_value());
    });
    const auto item = add("Email Sam in 2 hours");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->notificationID, reminderIdentifier(item->id));
    EXPECT_EQ(store.items()[0], *item);
    EXPECT_EQ(hadReminder, std::vector<bool>{true}) << "in one step";
    ASSERT_EQ(center.pending.size(), 1U);
    const ReminderRequest& request = center.pending.at(*item->notificationID);
    EXPECT_EQ(request.content.body, "Email Sam");
    EXPECT_EQ(request.dueDate, item->dueDate);
}

TEST_F(AddTaskReminderTest, ATaskWithoutDateAsksForNothing) {
    const auto item = add("Buy milk");
    EXPECT_EQ(item->notificationID, std::nullopt);
    EXPECT_EQ(center.statusQueries, 0);
    EXPECT_EQ(store.items()[0], *item);
}

TEST_F(AddTaskReminderTest, ATaskIsAddedAlsoWhereItCannotBeRemindedOf) {
    center.status = ReminderAuthorization::denied;
    EXPECT_EQ(add("Call mom tomorrow")->notificationID, std::nullopt);
    center.status = ReminderAuthorization::authorized;
    center.addOutcome = Error{"full"};
    EXPECT_EQ(add("Call dad tomorrow")->notificationID, std::nullopt);
    EXPECT_EQ(titles(), (std::vector<std::string>{"Call dad", "Call mom"}));
}

TEST_F(AddTaskReminderTest, ATaskWaitsForThePermission) {
    center.status = ReminderAuthorization::notDetermined;
    center.hold();
    std::optional<TodoItem> added;
    addTask->add("Call mom tomorrow", place, [&](const std::optional<TodoItem>& item) { added = item; });
    EXPECT_FALSE(added);
    add("Buy milk");
    EXPECT_EQ(titles(), std::vector<std::string>{"Buy milk"});
    while (center.step()) {
    }
    EXPECT_EQ(titles(), (std::vector<std::string>{"Call mom", "Buy milk"}));
    EXPECT_EQ(added, store.items()[0]);
    EXPECT_EQ(added->notificationID, reminderIdentifier(added->id));
}

TEST_F(AddTaskReminderTest, WhatStillWaitsCanBeAddedAtOnce) {
    center.hold();
    addTask->add("Call mom tomorrow", place);
    addTask->add("Call dad tomorrow", place);
    addTask->addWaiting();
    EXPECT_EQ(titles(), (std::vector<std::string>{"Call dad", "Call mom"}));
    EXPECT_EQ(store.items()[0].notificationID, std::nullopt);
    while (center.step()) {
    }
    EXPECT_EQ(store.items().size(), 2U);
    addTask->addWaiting();
    EXPECT_EQ(store.items().size(), 2U);
}

TEST_F(AddTaskReminderTest, NothingIsAddedOnceItIsGone) {
    center.hold();
    addTask->add("Call mom tomorrow", place);
    addTask.reset();
    while (center.step()) {
    }
    EXPECT_TRUE(store.items().empty());
}

} // namespace
} // namespace quillo
