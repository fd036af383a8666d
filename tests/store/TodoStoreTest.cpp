// What the operations do to the list, the counts, the reminders and whoever listens. What reaches the stores
// is in TodoStorePersistenceTest.cpp.
#include "store/TodoStore.h"

#include "store/World.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <random>

namespace quillo {
namespace {

using support::contents;
using support::numberedId;
using support::Task;
using support::titles;
using support::World;
using Titles = std::vector<std::string>;
using Kind = ListChange::Kind;

class TodoStoreTest : public testing::Test {
protected:
    /// A store that found these tasks.
    TodoStore& start(const std::vector<TodoItem>& items = {}) {
        world.keep(items, 1);
        store.emplace(world.dependencies());
        listening = store->observeList([this](const ListChange& change) { changes.push_back(change); });
        inboxZero = world.notifications.observe(notifications::inboxZero,
                                                [this] { events.emplace_back("inbox zero"); });
        return *store;
    }

    double stamp() const { return store->lastLocalStamp().get(); }

    World world;
    std::optional<TodoStore> store;
    std::vector<ListChange> changes;
    std::vector<std::string> events;
    Connection listening;
    Connection inboxZero;
};

TEST_F(TodoStoreTest, AddsOnTopEvenWhatIsDueLast) {
    start({Task("old").due({10})}).add(Task("new").due({1000}));
    EXPECT_EQ(titles(store->items()), (Titles{"new", "old"}));
    EXPECT_EQ(changes, (std::vector<ListChange>{{Kind::inserted, 0}}));
    EXPECT_EQ(store->activeCount().get(), 2);
    EXPECT_EQ(store->doneCount().get(), 0);
}

TEST_F(TodoStoreTest, TakesRecordsAsTheyAre) {
    const TodoItem item = Task("").due({-1}).done({5}).reminder("r");
    start().add(item);
    EXPECT_EQ(store->items()[0], item);
    EXPECT_TRUE(world.reminders.removed.empty());
}

TEST_F(TodoStoreTest, StampsEveryChangeWithTheTime) {
    start();
    EXPECT_EQ(stamp(), 1);
    world.clock.set(Instant::fromUnixSeconds(1741081260.25));
    store->add(Task("a"));
    EXPECT_EQ(stamp(), 1741081260.25);
    world.clock.advance(0.5);
    store->toggle(store->items()[0].id);
    EXPECT_EQ(stamp(), 1741081260.75);
}

TEST_F(TodoStoreTest, CompletesAnOpenTask) {
    start({Task("a"), Task("b").id(numberedId(2)).reminder("quillo.2"), Task("c")}).toggle(numberedId(2));
    const TodoItem& item = store->items()[1];
    EXPECT_TRUE(item.isDone);
    EXPECT_EQ(item.completedAt, world.clock.now());
    EXPECT_EQ(item.notificationID, "quillo.2");
    EXPECT_EQ(world.reminders.removed, (Titles{"quillo.2"}));
    EXPECT_EQ(titles(store->items()), (Titles{"a", "b", "c"}));
    EXPECT_EQ(changes, (std::vector<ListChange>{{Kind::replaced, 1}}));
    EXPECT_EQ(store->activeCount().get(), 2);
    EXPECT_EQ(store->doneCount().get(), 1);
}

TEST_F(TodoStoreTest, ReopensADoneTaskWithoutBringingItsReminderBack) {
    start({Task("a").id(numberedId(1)).reminder("quillo.1")}).toggle(numberedId(1));
    store->toggle(numberedId(1));
    const TodoItem& item = store->items()[0];
    EXPECT_FALSE(item.isDone);
    EXPECT_EQ(item.completedAt, std::nullopt);
    EXPECT_EQ(item.notificationID, "quillo.1");
    EXPECT_EQ(world.reminders.removed, (Titles{"quillo.1"}));
    EXPECT_EQ(store->activeCount().get(), 1);
    EXPECT_EQ(store->doneCount().get(), 0);
}

TEST_F(TodoStoreTest, CompletingATaskWithoutReminderAsksForNoneToBeRemoved) {
    start({Task("a").id(numberedId(1))}).toggle(numberedId(1));
    EXPECT_TRUE(world.reminders.removed.empty());
}

TEST_F(TodoStoreTest, AnnouncesAnEmptyInboxEachTimeTheLastOpenTaskIsCompleted) {
    start({Task("a").id(numberedId(1)), Task("b").id(numberedId(2))});
    store->toggle(numberedId(1));
    EXPECT_EQ(events.size(), 0U);
    store->toggle(numberedId(2));
    EXPECT_EQ(events.size(), 1U);
    store->toggle(numberedId(2));
    EXPECT_EQ(events.size(), 1U);
    store->toggle(numberedId(2));
    EXPECT_EQ(events.size(), 2U);
}

TEST_F(TodoStoreTest, AnnouncesNoEmptyInboxWhenTasksGoOtherwise) {
    start({Task("a").id(numberedId(1)), Task("b").done()});
    store->remove(numberedId(1));
    store->clearCompleted();
    EXPECT_TRUE(events.empty());
}

TEST_F(TodoStoreTest, TellsCompletionListenersInOrderAfterTheEmptyInbox) {
    start({Task("a").id(numberedId(1))});
    const auto listener = [this](const std::string& name) {
        return [this, name](const TodoItem& item, Instant at) {
            EXPECT_EQ(item, store->items()[0]);
            EXPECT_EQ(at, world.clock.now());
            EXPECT_EQ(item.completedAt, at);
            EXPECT_EQ(store->activeCount().get(), 0);
            events.push_back(name);
        };
    };
    store->addCompletionListener(listener("first"));
    store->addCompletionListener(listener("second"));
    store->toggle(numberedId(1));
    EXPECT_EQ(events, (Titles{"inbox zero", "first", "second"}));
    store->toggle(numberedId(1));
    EXPECT_EQ(events.size(), 3U);
}

TEST_F(TodoStoreTest, CompletionListenersHearOfNoOtherChange) {
    start({Task("a").id(numberedId(1))});
    store->addCompletionListener([this](const TodoItem&, Instant) { events.emplace_back("completed"); });
    store->add(Task("done already").done());
    store->update(Task("done by update").id(numberedId(1)).done());
    store->clearCompleted();
    EXPECT_TRUE(events.empty());
}

TEST_F(TodoStoreTest, UpdatesTheWholeRecordAndNoReminder) {
    start({Task("a"), Task("b").id(numberedId(2)).reminder("old")});
    const TodoItem item = Task("B").id(numberedId(2)).due({5}).done({6}).reminder("new");
    store->update(item);
    EXPECT_EQ(store->items()[1], item);
    EXPECT_TRUE(world.reminders.removed.empty());
    EXPECT_EQ(changes, (std::vector<ListChange>{{Kind::replaced, 1}}));
    EXPECT_EQ(store->doneCount().get(), 1);
}

TEST_F(TodoStoreTest, RemovesATaskAndItsReminder) {
    start({Task("a"), Task("b").id(numberedId(2)).reminder("quillo.2"), Task("c").id(numberedId(3))});
    store->remove(numberedId(2));
    store->remove(numberedId(3));
    EXPECT_EQ(titles(store->items()), (Titles{"a"}));
    EXPECT_EQ(world.reminders.removed, (Titles{"quillo.2"}));
    EXPECT_EQ(changes, (std::vector<ListChange>{{Kind::removed, 1}, {Kind::removed, 1}}));
    EXPECT_EQ(store->activeCount().get(), 1);
}

TEST_F(TodoStoreTest, ClearsDoneTasksAndTheirRemindersInOrder) {
    start({Task("a").done().reminder("1"), Task("b").reminder("2"), Task("c").done(), Task("d"),
           Task("e").done().reminder("3")});
    EXPECT_EQ(store->clearCompleted(), 3U);
    EXPECT_EQ(titles(store->items()), (Titles{"b", "d"}));
    EXPECT_EQ(world.reminders.removed, (Titles{"1", "3"}));
    EXPECT_EQ(changes, (std::vector<ListChange>{{Kind::reset}}));
    EXPECT_EQ(store->activeCount().get(), 2);
    EXPECT_EQ(store->doneCount().get(), 0);
}

TEST_F(TodoStoreTest, ClearingWithoutDoneTasksStampsButAnnouncesNothing) {
    start({Task("a"), Task("b")});
    EXPECT_EQ(store->clearCompleted(), 0U);
    EXPECT_EQ(titles(store->items()), (Titles{"a", "b"}));
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(stamp(), world.clock.now().unixSeconds());
}

TEST_F(TodoStoreTest, DoesNothingForAnUnknownId) {
    start({Task("a").id(numberedId(1)).reminder("r")});
    const TaskList before = store->items();
    store->toggle(numberedId(9));
    store->update(Task("b").id(numberedId(9)));
    store->remove(numberedId(9));
    EXPECT_EQ(store->items(), before);
    EXPECT_EQ(stamp(), 1);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(events.empty());
    EXPECT_TRUE(world.reminders.removed.empty());
    EXPECT_TRUE(store->drain());
    EXPECT_EQ(world.preferences.writes(), 1) << "only the one that put the list there";
}

TEST_F(TodoStoreTest, OfEqualIdsTheFirstCounts) {
    start({Task("a").id(numberedId(1)).reminder("first"), Task("b").id(numberedId(1)).reminder("second")});
    EXPECT_EQ(store->indexOf(numberedId(1)), 0U);
    store->toggle(numberedId(1));
    EXPECT_TRUE(store->items()[0].isDone);
    EXPECT_FALSE(store->items()[1].isDone);
    EXPECT_TRUE(events.empty()) << "the other is still open";
    store->update(Task("A").id(numberedId(1)));
    EXPECT_EQ(titles(store->items()), (Titles{"A", "b"}));
    store->remove(numberedId(1));
    EXPECT_EQ(titles(store->items()), (Titles{"b"}));
    store->remove(numberedId(1));
    EXPECT_TRUE(store->items().empty());
}

TEST_F(TodoStoreTest, AnnouncesCountsOnlyWhenTheyChange) {
    start({Task("a").id(numberedId(1))});
    std::vector<std::int64_t> active;
    std::vector<std::int64_t> done;
    const Connection first =
        store->activeCount().observe([&active](std::int64_t count) { active.push_back(count); });
    const Connection second =
        store->doneCount().observe([&done](std::int64_t count) { done.push_back(count); });
    store->update(Task("A").id(numberedId(1)));
    EXPECT_TRUE(active.empty());
    store->add(Task("b"));
    EXPECT_TRUE(done.empty());
    store->toggle(numberedId(1));
    store->clearCompleted();
    EXPECT_EQ(active, (std::vector<std::int64_t>{2, 1}));
    EXPECT_EQ(done, (std::vector<std::int64_t>{1, 0}));
}

TEST_F(TodoStoreTest, ListenersSeeTheListAsItIsAfterTheChange) {
    start({Task("a").id(numberedId(1))});
    std::vector<std::size_t> sizes;
    const Connection connection =
        store->observeList([&](const ListChange&) { sizes.push_back(store->items().size()); });
    store->add(Task("b"));
    store->remove(numberedId(1));
    EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 1}));
}

TEST_F(TodoStoreTest, AListenerMayChangeTheListItself) {
    start({Task("a").id(numberedId(1)), Task("b").id(numberedId(2))});
    const Connection connection = store->observeList([&](const ListChange& change) {
        if (change.kind == Kind::replaced)
            store->remove(numberedId(2));
    });
    store->toggle(numberedId(1));
    EXPECT_EQ(titles(store->items()), (Titles{"a"}));
    EXPECT_EQ(store->activeCount().get() + store->doneCount().get(), 1);
    EXPECT_TRUE(store->drain());
    EXPECT_EQ(World::listIn(world.preferences), contents(store->items()));
}

/// A second telling of every operation, over a plain array.
struct PlainList {
    std::vector<TodoItem> items;

    auto find(const Uuid& id) {
        return std::find_if(items.begin(), items.end(),
                            [&id](const TodoItem& item) { return item.id == id; });
    }
    std::int64_t done() const {
        return std::count_if(items.begin(), items.end(), [](const TodoItem& item) { return item.isDone; });
    }
};

/// Any operations in any order, on few ids so that equal ones occur: the list is as told, the counts add up,
/// what is announced leads from the list before to the one after, and what is stored in the end is the list.
RC_GTEST_PROP(TodoStoreProperty, KeepsListCountsAnnouncementsAndStoredListInStep, ()) {
    World world;
    PlainList expected;
    const int count = *rc::gen::inRange(0, 30);
    for (int number = 0; number < count; ++number)
        expected.items.push_back(
            Task(std::to_string(number)).id(numberedId(*rc::gen::inRange<std::uint32_t>(0, 15))));
    world.keep(expected.items, 1);
    TodoStore store(world.dependencies());
    RC_ASSERT(contents(store.items()) == expected.items);

    std::vector<TodoItem> followed = expected.items;
    const Connection connection = store.observeList([&](const ListChange& change) {
        const auto place = followed.begin() + static_cast<std::ptrdiff_t>(change.index);
        switch (change.kind) {
        case Kind::inserted:
            followed.insert(place, store.items()[change.index]);
            break;
        case Kind::replaced:
            *place = store.items()[change.index];
            break;
        case Kind::removed:
            followed.erase(place);
            break;
        case Kind::reset:
            followed = contents(store.items());
            break;
        }
    });

    const int steps = *rc::gen::inRange(0, 60);
    for (int step = 0; step < steps; ++step) {
        world.clock.advance(1);
        const Uuid id = numberedId(*rc::gen::inRange<std::uint32_t>(0, 20));
        const auto place = expected.find(id);
        const TodoItem item = Task("step " + std::to_string(step)).id(id);
        switch (*rc::gen::inRange(0, 5)) {
        case 0:
            store.add(item);
            expected.items.insert(expected.items.begin(), item);
            break;
        case 1:
            store.toggle(id);
            if (place != expected.items.end()) {
                place->isDone = !place->isDone;
                place->completedAt = place->isDone ? std::optional(world.clock.now()) : std::nullopt;
            }
            break;
        case 2:
            store.update(item);
            if (place != expected.items.end())
                *place = item;
            break;
        case 3:
            store.remove(id);
            if (place != expected.items.end())
                expected.items.erase(place);
            break;
        default:
            store.clearCompleted();
            std::erase_if(expected.items, [](const TodoItem& task) { return task.isDone; });
        }
        RC_ASSERT(contents(store.items()) == expected.items);
        RC_ASSERT(followed == expected.items);
        RC_ASSERT(store.doneCount().get() == expected.done());
        RC_ASSERT(store.activeCount().get() + store.doneCount().get() ==
                  static_cast<std::int64_t>(expected.items.size()));
    }
    RC_ASSERT(store.drain().ok());
    RC_ASSERT(World::listIn(world.preferences) == expected.items);
    RC_ASSERT(world.preferences.real(preference_keys::itemsStamp) == store.lastLocalStamp().get());
}

} // namespace
} // namespace quillo
