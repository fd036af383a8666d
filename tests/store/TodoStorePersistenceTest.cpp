// What is read from the preferences when a store starts, and what reaches them and the cloud store
// afterwards, when and on which thread.
#include "store/TodoStore.h"
#include "store/World.h"
#include "support/CapturedLog.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <future>
#include <limits>
#include <optional>
#include <thread>

namespace quillo {
namespace {

using support::CapturedLog;
using support::contents;
using support::numberedId;
using support::Task;
using support::titles;
using support::World;
using Titles = std::vector<std::string>;

Titles storedTitles(const KeyValueStore& store) {
    const auto items = World::listIn(store);
    return items ? titles(*items) : Titles{"no list"};
}

// Loading.

TEST(TodoStoreLoad, StartsEmptyWithoutStoredList) {
    World world;
    const TodoStore store(world.dependencies());
    EXPECT_TRUE(store.items().empty());
    EXPECT_EQ(store.activeCount().get(), 0);
    EXPECT_EQ(store.doneCount().get(), 0);
    EXPECT_EQ(store.lastLocalStamp().get(), 0);
    EXPECT_EQ(world.preferences.writes(), 0);
}

TEST(TodoStoreLoad, TakesListCountsAndStamp) {
    World world;
    world.keep({Task("a"), Task("b").done(), Task("c")}, 1234.5);
    const TodoStore store(world.dependencies());
    EXPECT_EQ(titles(store.items()), (Titles{"a", "b", "c"}));
    EXPECT_EQ(store.activeCount().get(), 2);
    EXPECT_EQ(store.doneCount().get(), 1);
    EXPECT_EQ(store.lastLocalStamp().get(), 1234.5);
}

TEST(TodoStoreLoad, TakesAnAbsentOrMistypedStampAsZero) {
    for (const bool present : {false, true}) {
        World world;
        world.keep({Task("a")}, 5);
        world.preferences.remove(preference_keys::itemsStamp);
        if (present)
            world.preferences.set(preference_keys::itemsStamp, std::int64_t{5});
        const TodoStore store(world.dependencies());
        EXPECT_EQ(store.items().size(), 1U);
        EXPECT_EQ(store.lastLocalStamp().get(), 0);
    }
}

TEST(TodoStoreLoad, StartsEmptyWithWhatCannotBeDecodedAndLeavesItAlone) {
    const CapturedLog log;
    for (const Value& value : {Value(Data("[{]")), Value(Data("")), Value(std::string("[]")), Value(true)}) {
        World world;
        world.preferences.set(preference_keys::items, value);
        world.preferences.set(preference_keys::itemsStamp, 7.0);
        {
            const TodoStore store(world.dependencies());
            EXPECT_TRUE(store.items().empty());
            EXPECT_EQ(store.lastLocalStamp().get(), 0);
        }
        EXPECT_EQ(world.preferences.value(preference_keys::items), value);
        EXPECT_EQ(world.preferences.writes(), 2);
    }
    EXPECT_EQ(log.lines().size(), 4U);
}

TEST(TodoStoreLoad, QueuesASynchronizeWhateverTheSetting) {
    for (const bool sync : {true, false}) {
        World world;
        world.preferences.set(preference_keys::cloudSync, sync);
        world.cloud.hold();
        TodoStore store(world.dependencies()); // Would never return if it waited for the cloud store itself.
        world.cloud.release();
        EXPECT_TRUE(store.drain());
        EXPECT_EQ(world.cloud.synchronizations, 1);
        EXPECT_EQ(world.cloud.writes(), 0);
    }
}

// Saving.

TEST(TodoStoreSave, WhatIsSavedIsFoundAgain) {
    World world;
    std::vector<TodoItem> before;
    double stamp = 0;
    {
        TodoStore store(world.dependencies());
        store.add(Task("a").id(numberedId(1)).due({5}).reminder("r"));
        store.add(Task("b"));
        store.toggle(numberedId(1));
        before = contents(store.items());
        stamp = store.lastLocalStamp().get();
    } // Its end waits for the save.
    const TodoStore store(world.dependencies());
    EXPECT_EQ(contents(store.items()), before);
    EXPECT_EQ(store.lastLocalStamp().get(), stamp);
}

TEST(TodoStoreSave, WritesListAndStampTogether) {
    World world;
    TodoStore store(world.dependencies());
    store.add(Task("a"));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(world.preferences.writes(), 1);
    EXPECT_EQ(storedTitles(world.preferences), (Titles{"a"}));
    EXPECT_EQ(world.preferences.real(preference_keys::itemsStamp), world.clock.now().unixSeconds());
    EXPECT_EQ(world.cloud.writes(), 1);
    EXPECT_EQ(world.cloud.data(preference_keys::items), world.preferences.data(preference_keys::items));
    EXPECT_EQ(world.cloud.real(preference_keys::itemsStamp), world.clock.now().unixSeconds());
    EXPECT_EQ(world.cloud.synchronizations, 2) << "at start, and after the save";
}

TEST(TodoStoreSave, GoesToTheCloudUnlessTheSettingIsOff) {
    const std::vector<std::pair<std::optional<Value>, bool>> cases = {{std::nullopt, true},
                                                                      {Value(true), true},
                                                                      {Value(std::int64_t{0}), true},
                                                                      {Value(std::string("")), true},
                                                                      {Value(false), false}};
    for (const auto& [setting, toCloud] : cases) {
        World world;
        if (setting)
            world.preferences.set(preference_keys::cloudSync, *setting);
        TodoStore store(world.dependencies());
        store.add(Task("a"));
        EXPECT_TRUE(store.drain());
        EXPECT_EQ(storedTitles(world.preferences), (Titles{"a"}));
        EXPECT_EQ(world.cloud.writes(), toCloud ? 1 : 0);
        EXPECT_EQ(world.cloud.synchronizations, toCloud ? 2 : 1);
    }
}

TEST(TodoStoreSave, ClearingWithoutDoneTasksSaves) {
    World world;
    world.keep({Task("a")}, 5);
    TodoStore store(world.dependencies());
    store.clearCompleted();
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(world.preferences.real(preference_keys::itemsStamp), world.clock.now().unixSeconds());
    EXPECT_EQ(storedTitles(world.preferences), (Titles{"a"}));
}

TEST(TodoStoreSave, ReadsTheSettingWhenTheChangeIsMade) {
    World world;
    world.preferences.set(preference_keys::cloudSync, false);
    world.cloud.hold();
    TodoStore store(world.dependencies());
    store.add(Task("a"));
    world.preferences.set(preference_keys::cloudSync, true);
    world.cloud.release();
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(world.cloud.writes(), 0);
}

TEST(TodoStoreSave, WritesNothingAnywhereIfTheListCannotBeEncoded) {
    const CapturedLog log;
    World world;
    TodoStore store(world.dependencies());
    store.add(Task("good"));
    EXPECT_TRUE(store.drain());
    store.add(Task("bad").id(numberedId(1)).made({std::nan("")}));
    EXPECT_FALSE(store.drain());
    EXPECT_EQ(storedTitles(world.preferences), (Titles{"good"}));
    EXPECT_EQ(storedTitles(world.cloud), (Titles{"good"}));
    EXPECT_EQ(world.cloud.synchronizations, 2);
    EXPECT_EQ(log.lines().size(), 1U);
    store.remove(numberedId(1));
    EXPECT_TRUE(store.drain());
}

// Waiting saves.

/// The lists that were written, in order.
class RecordingPreferences : public support::InMemoryPreferences {
public:
    void apply(std::vector<Change> changes) override {
        support::InMemoryPreferences::apply(std::move(changes));
        if (const auto items = World::listIn(*this))
            written.push_back(titles(*items));
    }

    std::vector<Titles> written;
};

struct RecordingWorld : World {
    TodoStoreDependencies dependencies(Backups* backups = nullptr) {
        return {recording, cloud, reminders, clock, notifications, mainExecutor, backups};
    }

    RecordingPreferences recording;
};

TEST(TodoStoreWaitingSaves, OnlyTheLastOfSeveralIsMade) {
    RecordingWorld world;
    world.cloud.hold();
    TodoStore store(world.dependencies());
    world.cloud.waitUntilHolding();
    for (const char* title : {"a", "b", "c"})
        store.add(Task(title));
    world.cloud.release();
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(world.recording.written, (std::vector<Titles>{{"c", "b", "a"}}));
    EXPECT_EQ(world.cloud.writes(), 1);
}

TEST(TodoStoreWaitingSaves, OneForTheCloudIsNotReplacedByOneThatIsNot) {
    RecordingWorld world;
    world.cloud.hold();
    TodoStore store(world.dependencies());
    world.cloud.waitUntilHolding();
    store.add(Task("a"));
    store.add(Task("b"));
    world.recording.set(preference_keys::cloudSync, false);
    store.add(Task("c"));
    store.add(Task("d"));
    world.recording.set(preference_keys::cloudSync, true);
    store.add(Task("e"));
    world.cloud.release();
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(world.recording.written,
              (std::vector<Titles>{{"b", "a"}, {"d", "c", "b", "a"}, {"e", "d", "c", "b", "a"}}));
    EXPECT_EQ(world.cloud.writes(), 2);
}

TEST(TodoStoreWaitingSaves, EachHasTheListAsItWasWhenItWasAskedFor) {
    RecordingWorld world;
    world.cloud.hold();
    TodoStore store(world.dependencies());
    world.cloud.waitUntilHolding();
    store.add(Task("a").id(numberedId(1)));
    store.remove(numberedId(1)); // Backing up comes between the saves.
    store.add(Task("b"));
    world.cloud.release();
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(world.recording.written, (std::vector<Titles>{{"a"}, {"b"}}));
}

// Threads.

/// Remembers which keys the test's own thread asked for, and whether it wrote.
class WatchedPreferences : public support::InMemoryPreferences {
public:
    std::optional<Value> value(std::string_view key) const override {
        if (std::this_thread::get_id() == mainThread_)
            readOnMainThread.emplace_back(key);
        return support::InMemoryPreferences::value(key);
    }
    void apply(std::vector<Change> changes) override {
        if (std::this_thread::get_id() == mainThread_)
            ++writesOnMainThread;
        support::InMemoryPreferences::apply(std::move(changes));
    }

    mutable Titles readOnMainThread;
    int writesOnMainThread = 0;

private:
    const std::thread::id mainThread_ = std::this_thread::get_id();
};

TEST(TodoStoreThreads, OperationsOnTheMainThreadOnlyReadTheSyncSetting) {
    World world;
    WatchedPreferences watched;
    TodoStore store(
        {watched, world.cloud, world.reminders, world.clock, world.notifications, world.mainExecutor});
    watched.readOnMainThread.clear();
    store.add(Task("a").id(numberedId(1)));
    store.update(Task("A").id(numberedId(1)));
    store.toggle(numberedId(1));
    store.clearCompleted();
    store.remove(numberedId(1));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(watched.readOnMainThread, Titles(4, std::string(preference_keys::cloudSync)));
    EXPECT_EQ(watched.writesOnMainThread, 0);
    EXPECT_GE(watched.writes(), 1);
}

TEST(TodoStoreThreads, OperationsWaitForNothing) {
    World world;
    world.cloud.hold();
    TodoStore store(world.dependencies());
    store.add(Task("a").id(numberedId(1)));
    store.toggle(numberedId(1));
    store.clearCompleted();
    EXPECT_EQ(world.preferences.writes(), 0); // All this happened while the queue could not move.
    world.cloud.release();
}

TEST(TodoStoreThreads, TellsWhenWhatCameBeforeIsSaved) {
    World world;
    TodoStore store(world.dependencies());
    store.add(Task("a"));
    std::promise<std::optional<std::vector<TodoItem>>> seen;
    store.whenSaved([&](const Outcome& outcome) {
        EXPECT_TRUE(outcome);
        seen.set_value(World::listIn(world.preferences));
    });
    EXPECT_EQ(seen.get_future().get(), contents(store.items()));
}

TEST(TodoStoreThreads, TellsThatTheListCannotBeSaved) {
    World world;
    TodoStore store(world.dependencies());
    store.add(Task("a").due({std::numeric_limits<double>::infinity()}));
    std::promise<bool> saved;
    store.whenSaved([&](const Outcome& outcome) { saved.set_value(outcome.ok()); });
    EXPECT_FALSE(saved.get_future().get());
}

} // namespace
} // namespace quillo
