#include "entry/ReminderAlignment.h"

#include "base/ManualExecutor.h"
#include "entry/Services.h"
#include "model/TodoItemJson.h"
#include "reminders/TaskReminder.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;

struct ReminderAlignmentTest : testing::Test {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::TemporaryFolder folder;
    Backups backups{folder.path(), clock};
    ManualExecutor mainExecutor;
    Services services{Surroundings{preferences, cloud, clock, calendar, mainExecutor, backups}};
    std::optional<ReminderAlignment> alignment;
    Connection aligned;
    int timesAligned = 0;

    TodoItem remindedTask(std::uint32_t number) const {
        return Task("task " + std::to_string(number))
            .id(numberedId(number))
            .due(Instant{clock.now().secondsSince2001 + 3600})
            .reminder(reminderIdentifier(numberedId(number)));
    }
    bool booked(std::uint32_t number) {
        return services.reminderBook().find(reminderIdentifier(numberedId(number))) != nullptr;
    }
    void begin() {
        alignment.emplace(ReminderAlignmentDependencies{services.todoStore(), services.reminderBook(), clock,
                                                        calendar, mainExecutor});
        aligned = alignment->aligned.connect([this] { ++timesAligned; });
    }
    /// Runs what arrives on the main thread until the book is in line.
    void settle(int times) {
        while (timesAligned < times) {
            mainExecutor.run();
            std::this_thread::yield();
        }
    }
};

TEST_F(ReminderAlignmentTest, MakesAtStartWhatIsMissing) {
    services.todoStore().add(remindedTask(1));
    EXPECT_FALSE(booked(1));
    begin();
    EXPECT_FALSE(booked(1)) << "not while it is being made";
    settle(1);
    EXPECT_TRUE(booked(1));
}

TEST_F(ReminderAlignmentTest, LooksAgainWhereTheListChangesMeanwhile) {
    services.todoStore().add(remindedTask(1));
    begin();
    clock.advance(1);
    services.todoStore().remove(numberedId(1));
    services.todoStore().add(remindedTask(2));
    settle(1);
    EXPECT_FALSE(booked(1));
    EXPECT_TRUE(booked(2));
}

TEST_F(ReminderAlignmentTest, FollowsAListFromAnotherMachine) {
    services.todoStore().add(remindedTask(1));
    begin();
    settle(1);
    ASSERT_TRUE(booked(1));
    ASSERT_TRUE(services.todoStore().drain()); // Or this machine's list would arrive there after the other.
    cloud.apply(
        {{std::string(preference_keys::items), Data(*encodeStoredItems(std::vector{remindedTask(2)}))},
         {std::string(preference_keys::itemsStamp), clock.now().unixSeconds() + 10}});
    cloud.externalChange.emit();
    settle(2);
    EXPECT_FALSE(booked(1));
    EXPECT_TRUE(booked(2));
}

TEST_F(ReminderAlignmentTest, NothingArrivesOnceItIsGone) {
    services.todoStore().add(remindedTask(1));
    begin();
    alignment.reset();
    mainExecutor.run();
    EXPECT_FALSE(booked(1));
}

} // namespace
} // namespace quillo
