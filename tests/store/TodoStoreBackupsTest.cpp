// Which lists the store keeps before they are gone, and what it does with a stored value that it cannot read.
#include "store/TodoStore.h"
#include "store/World.h"
#include "support/CapturedLog.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillo {
namespace {

using support::bytesOf;
using support::CapturedLog;
using support::namesIn;
using support::numberedId;
using support::Task;
using support::TemporaryFolder;
using support::titles;
using support::World;
using support::writeFile;
using Titles = std::vector<std::string>;

/// Does something just before each write.
class InterceptedPreferences : public support::InMemoryPreferences {
public:
    void apply(std::vector<Change> changes) override {
        if (beforeWrite)
            beforeWrite();
        support::InMemoryPreferences::apply(std::move(changes));
    }

    std::function<void()> beforeWrite;
};

class TodoStoreBackupsTest : public testing::Test {
protected:
    TodoStoreDependencies dependencies() {
        return {preferences,         world.cloud,        world.reminders, world.clock,
                world.notifications, world.mainExecutor, &backups};
    }

    /// The titles of each kept list, oldest first.
    std::vector<Titles> keptLists() const {
        std::vector<Titles> lists;
        for (const std::string& name : namesIn(folder.path() / "backups")) {
            const auto items = decodeStoredItems(bytesOf(folder.path() / "backups" / name));
            lists.push_back(items ? titles(*items) : Titles{"no list"});
        }
        return lists;
    }

    /// The names of the damaged values set aside.
    std::vector<std::string> damaged() const {
        std::vector<std::string> names = namesIn(folder.path());
        std::erase_if(names, [](const std::string& name) { return !name.starts_with("damaged-"); });
        return names;
    }

    CapturedLog log;
    TemporaryFolder folder;
    World world;
    InterceptedPreferences preferences;
    Backups backups{folder.path(), world.clock};
};

TEST_F(TodoStoreBackupsTest, KeepsTheListAsItWasBeforeEachRemovalAndClearing) {
    TodoStore store(dependencies());
    store.add(Task("a").id(numberedId(1)));
    store.add(Task("b").id(numberedId(2)));
    store.add(Task("c"));
    store.remove(numberedId(1));
    store.toggle(numberedId(2));
    store.clearCompleted();
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(keptLists(), (std::vector<Titles>{{"c", "b", "a"}, {"c", "b"}}));
}

TEST_F(TodoStoreBackupsTest, KeepsNothingWhereNothingIsLost) {
    TodoStore store(dependencies());
    store.add(Task("a").id(numberedId(1)));
    store.toggle(numberedId(1));
    store.toggle(numberedId(1));
    store.update(Task("b").id(numberedId(1)));
    store.remove(numberedId(9));
    store.clearCompleted();
    EXPECT_TRUE(store.drain());
    EXPECT_TRUE(namesIn(folder.path()).empty());
}

TEST_F(TodoStoreBackupsTest, BacksUpBeforeTheSmallerListIsSaved) {
    TodoStore store(dependencies());
    store.add(Task("a").id(numberedId(1)));
    EXPECT_TRUE(store.drain());
    std::vector<Titles> keptAtWrite;
    preferences.beforeWrite = [&] { keptAtWrite = keptLists(); };
    store.remove(numberedId(1));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(keptAtWrite, (std::vector<Titles>{{"a"}}));
}

TEST_F(TodoStoreBackupsTest, RemovesThoughTheBackupFails) {
    writeFile(folder.path() / "backups", "in the way");
    TodoStore store(dependencies());
    store.add(Task("a").id(numberedId(1)));
    store.remove(numberedId(1));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(World::listIn(preferences), std::vector<TodoItem>{});
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(TodoStoreBackupsTest, SetsADamagedListAsideBeforeItIsFirstOverwritten) {
    preferences.set(preference_keys::items, Data("[{\"id\":"));
    TodoStore store(dependencies());
    EXPECT_TRUE(store.beganDamaged());
    EXPECT_TRUE(store.drain());
    EXPECT_TRUE(damaged().empty()) << "nothing was saved yet";

    std::vector<std::string> asideAtWrite;
    preferences.beforeWrite = [&] { asideAtWrite = damaged(); };
    store.add(Task("a"));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(asideAtWrite, (Titles{"damaged-20250304T094100.250Z-Quillo.items.v1"}));
    EXPECT_EQ(bytesOf(folder.path() / asideAtWrite.at(0)), "[{\"id\":");

    store.add(Task("b"));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(damaged().size(), 1U) << "once is enough";
    EXPECT_EQ(World::listIn(preferences)->size(), 2U);
}

TEST_F(TodoStoreBackupsTest, SetsTextInThePlaceOfTheListAside) {
    preferences.set(preference_keys::items, std::string("[]"));
    TodoStore store(dependencies());
    store.add(Task("a"));
    EXPECT_TRUE(store.drain());
    ASSERT_EQ(damaged().size(), 1U);
    EXPECT_EQ(bytesOf(folder.path() / damaged()[0]), "[]");
}

TEST_F(TodoStoreBackupsTest, NeverOverwritesADamagedListThatCannotBeSetAside) {
    std::filesystem::remove(folder.path());
    writeFile(folder.path(), "no folder, so no room");
    preferences.set(preference_keys::items, Data("damaged"));
    TodoStore store(dependencies());
    store.add(Task("a"));
    const Outcome outcome = store.drain();
    ASSERT_FALSE(outcome);
    EXPECT_NE(outcome.error().message.find("damaged"), std::string::npos);
    EXPECT_EQ(preferences.data(preference_keys::items), Data("damaged"));
    EXPECT_EQ(world.cloud.writes(), 0);

    std::filesystem::remove(folder.path()); // Room again: the next save makes up for it.
    std::filesystem::create_directory(folder.path());
    store.add(Task("b"));
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(damaged().size(), 1U);
    EXPECT_EQ(titles(*World::listIn(preferences)), (Titles{"b", "a"}));
}

/// Asks for a kept list and lets it arrive; says what was told.
std::string restore(TodoStore& store, ManualExecutor& mainExecutor, std::size_t which) {
    std::string told = "nothing";
    store.restoreEarlier(which,
                         [&](const Outcome& outcome) { told = outcome ? "done" : outcome.error().message; });
    EXPECT_TRUE(store.drain());
    mainExecutor.run();
    return told;
}

TEST_F(TodoStoreBackupsTest, AnEarlierListComesBackAndTheOneItReplacesIsKept) {
    TodoStore store(dependencies());
    store.add(Task("one"));
    store.add(Task("two"));
    store.remove(store.items()[0].id);
    store.add(Task("three"));
    const double before = store.lastLocalStamp().get();
    world.clock.advance(10);
    std::vector<ListChange> changes;
    int accepted = 0;
    const Connection list = store.observeList([&](const ListChange& change) { changes.push_back(change); });
    const Connection other = store.observeAcceptedList([&] { ++accepted; });

    EXPECT_EQ(restore(store, world.mainExecutor, 1), "done");
    EXPECT_EQ(titles(store.items()), (Titles{"two", "one"}));
    EXPECT_EQ(changes, (std::vector<ListChange>{{ListChange::Kind::reset}}));
    EXPECT_EQ(accepted, 1);
    EXPECT_EQ(store.activeCount().get(), 2);
    EXPECT_GT(store.lastLocalStamp().get(), before) << "it is a change like any other";
    EXPECT_TRUE(store.drain());
    EXPECT_EQ(keptLists().back(), (Titles{"three", "one"}));
    EXPECT_EQ(titles(*World::listIn(preferences)), (Titles{"two", "one"}));
}

TEST_F(TodoStoreBackupsTest, WhatCannotBeBroughtBackChangesNothing) {
    TodoStore store(dependencies());
    store.add(Task("one"));
    EXPECT_EQ(restore(store, world.mainExecutor, 1), "no earlier list 1; none is kept");
    EXPECT_TRUE(backups.keepList("[{}]"));
    EXPECT_EQ(restore(store, world.mainExecutor, 1), "earlier list 1 cannot be read");
    EXPECT_EQ(titles(store.items()), (Titles{"one"}));

    TodoStore without(world.dependencies());
    EXPECT_EQ(restore(without, world.mainExecutor, 1), "no earlier lists are kept");
}

TEST_F(TodoStoreBackupsTest, AListThatArrivesTooLateTellsNobody) {
    bool told = false;
    {
        TodoStore store(dependencies());
        store.add(Task("one"));
        store.restoreEarlier(1, [&](const Outcome&) { told = true; });
    }
    world.mainExecutor.run();
    EXPECT_FALSE(told);
}

} // namespace
} // namespace quillo
