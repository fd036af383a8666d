// When the store takes over a list from another machine, what becomes of the one it had, and what it leaves
// alone.
#include "store/TodoStore.h"
#include "store/World.h"
#include "support/CapturedLog.h"
#include "support/SharedCloud.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace quillo {
namespace {

using support::CapturedLog;
using support::CloudEnd;
using support::contents;
using support::numberedId;
using support::SharedCloud;
using support::Task;
using support::titles;
using support::World;
using Titles = std::vector<std::string>;

constexpr double cloudStamp = 2'000'000'000;

std::vector<Change> pairOf(const Value& list, const std::optional<Value>& stamp) {
    return {{std::string(preference_keys::items), list}, {std::string(preference_keys::itemsStamp), stamp}};
}

Data listOf(const std::vector<TodoItem>& items) {
    return Data(*encodeStoredItems(items));
}

/// One task as another program might have written it: other order of keys, blanks, a key of its own.
Data foreignList() {
    return Data(R"([ { "createdAt": 1.50, "extra": [null], "title": "foreign", "dueDate": null,)"
                R"( "isDone": true, "id": "00000000-0000-0000-0000-000000000007" } ])");
}

class TodoStoreSyncTest : public testing::Test {
protected:
    TodoStoreDependencies dependencies(Backups* backups = nullptr) {
        return {world.preferences,  end,    world.reminders, world.clock, world.notifications,
                world.mainExecutor, backups};
    }

    void start(Backups* backups = nullptr) { store = std::make_unique<TodoStore>(dependencies(backups)); }

    void settle() {
        EXPECT_TRUE(store->drain());
        world.mainExecutor.run();
        EXPECT_TRUE(store->drain());
    }

    /// Puts values where the machine's end finds them, without a notice.
    void arrive(const Value& list, const std::optional<Value>& stamp) {
        cloud.put(pairOf(list, stamp));
        end.fetch();
    }

    void expectInPreferences(const Data& bytes, double stamp) const {
        EXPECT_EQ(world.preferences.data(preference_keys::items), bytes);
        EXPECT_EQ(world.preferences.real(preference_keys::itemsStamp), stamp);
    }

    World world;
    SharedCloud cloud;
    CloudEnd end{cloud};
    std::unique_ptr<TodoStore> store;
};

// What is accepted.

TEST_F(TodoStoreSyncTest, TakesAnyListWithAStampAtTheFirstStart) {
    arrive(listOf({Task("a"), Task("b").done()}), 0.5);
    start();
    EXPECT_TRUE(store->items().empty()) << "it is read in the background";
    settle();
    EXPECT_EQ(titles(store->items()), (Titles{"a", "b"}));
    EXPECT_EQ(store->activeCount().get(), 1);
    EXPECT_EQ(store->doneCount().get(), 1);
    EXPECT_EQ(store->lastLocalStamp().get(), 0.5);
}

TEST_F(TodoStoreSyncTest, KeepsTheBytesAsTheyCameAndWritesNothingBack) {
    arrive(foreignList(), cloudStamp);
    start();
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"foreign"});
    expectInPreferences(foreignList(), cloudStamp);
    EXPECT_EQ(world.preferences.writes(), 1) << "list and stamp together";
    EXPECT_EQ(end.writes(), 0);
}

TEST_F(TodoStoreSyncTest, AcceptsOnlyWhatIsStrictlyNewer) {
    const double own = 1000;
    const std::pair<double, bool> cases[] = {
        {std::nextafter(own, 0), false}, {own, false}, {std::nextafter(own, 2 * own), true}};
    for (const auto& [stamp, accepted] : cases) {
        world.keep({Task("own")}, own);
        arrive(listOf({Task("other")}), stamp);
        start();
        settle();
        EXPECT_EQ(titles(store->items()), Titles{accepted ? "other" : "own"}) << stamp - own;
        EXPECT_EQ(store->lastLocalStamp().get(), accepted ? stamp : own);
        EXPECT_EQ(world.preferences.real(preference_keys::itemsStamp), accepted ? stamp : own);
    }
}

TEST_F(TodoStoreSyncTest, NeverAcceptsAStampThatIsNoTime) {
    const CapturedLog log;
    const double infinity = std::numeric_limits<double>::infinity();
    const std::optional<Value> stamps[] = {std::nullopt,
                                           0.0,
                                           -0.0,
                                           -1.0,
                                           infinity,
                                           -infinity,
                                           std::nan(""),
                                           Value(std::int64_t{2'000'000'000}),
                                           Value(std::string("2000000000")),
                                           Value(true),
                                           Value(Data("2000000000"))};
    start();
    for (const auto& stamp : stamps) {
        arrive(listOf({Task("other")}), stamp);
        end.externalChange.emit();
        settle();
        EXPECT_TRUE(store->items().empty());
    }
    EXPECT_EQ(world.preferences.writes(), 0);
    EXPECT_EQ(end.writes(), 0);
}

TEST_F(TodoStoreSyncTest, NeverAcceptsWhatIsNoList) {
    world.keep({Task("own")}, 1000);
    start();
    const int before = world.preferences.writes();
    for (const Value& list :
         {Value(Data("[{]")), Value(Data("")), Value(Data("{}")), Value(std::string("[]")),
          Value(std::int64_t{0}), Value(Data("[] []")), Value(Data("[{\"title\":\"\"}]"))}) {
        arrive(list, cloudStamp);
        end.externalChange.emit();
        settle();
        EXPECT_EQ(titles(store->items()), Titles{"own"});
    }
    cloud.put({{std::string(preference_keys::items), std::nullopt}});
    end.fetch();
    end.externalChange.emit();
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"own"});
    EXPECT_EQ(world.preferences.writes(), before);
    EXPECT_EQ(store->lastLocalStamp().get(), 1000);
}

TEST_F(TodoStoreSyncTest, AStoredStampThatIsNoTimeKeepsNothingOut) {
    for (const double stored : {-1.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        world.keep({Task("own")}, stored);
        arrive(listOf({Task("other")}), 5.0);
        start();
        EXPECT_EQ(store->lastLocalStamp().get(), 0);
        settle();
        EXPECT_EQ(titles(store->items()), Titles{"other"});
    }
}

TEST_F(TodoStoreSyncTest, TakesAnEmptyListAsWell) {
    world.keep({Task("own")}, 1000);
    arrive(Data("[]"), cloudStamp);
    start();
    settle();
    EXPECT_TRUE(store->items().empty());
    EXPECT_EQ(store->activeCount().get(), 0);
    expectInPreferences(Data("[]"), cloudStamp);
}

/// Another pair arrives between the reading of the stamp and that of the list.
class OvertakenCloudStore : public support::InMemoryCloudStore {
public:
    std::optional<Value> value(std::string_view key) const override {
        if (key == preference_keys::items && later) {
            auto changes = *std::exchange(later, std::nullopt);
            const_cast<OvertakenCloudStore*>(this)->apply(std::move(changes));
        }
        return support::InMemoryCloudStore::value(key);
    }

    mutable std::optional<std::vector<Change>> later;
};

TEST_F(TodoStoreSyncTest, NeverTakesAListForThatOfAnotherStamp) {
    OvertakenCloudStore overtaken;
    overtaken.apply(pairOf(listOf({Task("first")}), 10.0));
    overtaken.later = pairOf(listOf({Task("second")}), 20.0);
    TodoStore other({world.preferences, overtaken, world.reminders, world.clock, world.notifications,
                     world.mainExecutor});
    EXPECT_TRUE(other.drain());
    world.mainExecutor.run();
    EXPECT_EQ(titles(other.items()), Titles{"second"});
    EXPECT_EQ(other.lastLocalStamp().get(), 20);
}

// The setting.

TEST_F(TodoStoreSyncTest, DoesNotPullAtStartWhereSyncIsOff) {
    world.preferences.set(preference_keys::cloudSync, false);
    arrive(listOf({Task("other")}), cloudStamp);
    start();
    settle();
    EXPECT_TRUE(store->items().empty());
}

TEST_F(TodoStoreSyncTest, LooksAtTheSettingAtEachNotice) {
    start();
    settle();
    const std::pair<std::optional<Value>, bool> cases[] = {{Value(false), false},
                                                           {Value(true), true},
                                                           {std::nullopt, true},
                                                           {Value(std::int64_t{0}), true},
                                                           {Value(std::string("false")), true}};
    double stamp = cloudStamp;
    for (const auto& [setting, on] : cases) {
        world.preferences.apply({{std::string(preference_keys::cloudSync), setting}});
        arrive(listOf({Task("other")}), ++stamp);
        end.externalChange.emit();
        settle();
        EXPECT_EQ(store->lastLocalStamp().get() == stamp, on);
    }
}

TEST_F(TodoStoreSyncTest, WhatWasAskedForWhileSyncWasOnIsTakenAfterwardsToo) {
    arrive(listOf({Task("other")}), cloudStamp);
    start();
    world.preferences.set(preference_keys::cloudSync, false);
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"other"});
}

TEST_F(TodoStoreSyncTest, TurningSyncOffOrOnMovesNothing) {
    arrive(listOf({Task("other")}), cloudStamp);
    world.preferences.set(preference_keys::cloudSync, false);
    start();
    world.preferences.set(preference_keys::cloudSync, true);
    settle();
    EXPECT_TRUE(store->items().empty());
    EXPECT_EQ(end.writes(), 0);
    world.preferences.set(preference_keys::cloudSync, false);
    settle();
    EXPECT_EQ(end.writes(), 0);
    EXPECT_EQ(end.real(preference_keys::itemsStamp), cloudStamp);
}

// Notices.

TEST_F(TodoStoreSyncTest, FollowsNoticesHoweverOftenTheyCome) {
    start();
    int accepted = 0;
    const Connection connection = store->observeAcceptedList([&] { ++accepted; });
    arrive(listOf({Task("other")}), cloudStamp);
    for (int notice = 0; notice < 3; ++notice)
        end.externalChange.emit();
    settle();
    end.externalChange.emit();
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"other"});
    EXPECT_EQ(accepted, 1);
    EXPECT_EQ(world.preferences.writes(), 1);
}

TEST_F(TodoStoreSyncTest, ALostNoticeIsMadeUpForByTheNext) {
    start();
    settle();
    arrive(listOf({Task("first")}), cloudStamp);
    settle();
    EXPECT_TRUE(store->items().empty());
    arrive(listOf({Task("second")}), cloudStamp + 1);
    end.externalChange.emit();
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"second"});
}

TEST_F(TodoStoreSyncTest, OfSeveralListsThatArriveTheNewestStays) {
    start();
    const Data newer = listOf({Task("newer")});
    arrive(newer, cloudStamp + 1);
    end.externalChange.emit();
    EXPECT_TRUE(store->drain());
    arrive(listOf({Task("older")}), cloudStamp);
    end.externalChange.emit();
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"newer"});
    expectInPreferences(newer, cloudStamp + 1);
}

// What happens here in between.

TEST_F(TodoStoreSyncTest, ANewerChangeMadeMeanwhileWins) {
    const double stamp = world.clock.now().unixSeconds() - 1;
    for (const bool alreadyRead : {false, true}) {
        world.preferences.apply(pairOf(Data("[]"), 0.0));
        end.gate().close();
        start();
        arrive(listOf({Task("other")}), stamp);
        end.externalChange.emit();
        if (alreadyRead) {
            end.gate().open();
            EXPECT_TRUE(store->drain());
        }
        store->add(Task("own"));
        end.gate().open();
        settle();
        EXPECT_EQ(titles(store->items()), Titles{"own"});
        EXPECT_EQ(store->lastLocalStamp().get(), world.clock.now().unixSeconds());
        expectInPreferences(listOf(contents(store->items())), world.clock.now().unixSeconds());
        EXPECT_EQ(end.data(preference_keys::items), world.preferences.data(preference_keys::items));
    }
}

TEST_F(TodoStoreSyncTest, AChangeMadeMeanwhileByAnEqualClockWins) {
    start();
    arrive(listOf({Task("other")}), world.clock.now().unixSeconds());
    end.externalChange.emit();
    EXPECT_TRUE(store->drain());
    store->add(Task("own"));
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"own"});
}

TEST_F(TodoStoreSyncTest, AnOlderChangeMadeMeanwhileGivesWayInThePreferencesToo) {
    start();
    arrive(foreignList(), world.clock.now().unixSeconds() + 1);
    end.externalChange.emit();
    EXPECT_TRUE(store->drain());
    store->add(Task("own"));
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"foreign"});
    expectInPreferences(foreignList(), world.clock.now().unixSeconds() + 1);
}

TEST_F(TodoStoreSyncTest, AChangeMadeByWhoHearsOfTheAcceptedListIsTheLastWord) {
    start();
    arrive(foreignList(), world.clock.now().unixSeconds() - 1);
    const Connection connection = store->observeList([&](const ListChange& change) {
        if (change.kind == ListChange::Kind::reset)
            store->toggle(numberedId(7));
    });
    end.externalChange.emit();
    settle();
    EXPECT_FALSE(store->items()[0].isDone);
    EXPECT_EQ(store->activeCount().get(), 1);
    EXPECT_EQ(store->lastLocalStamp().get(), world.clock.now().unixSeconds());
    expectInPreferences(listOf(contents(store->items())), world.clock.now().unixSeconds());
}

TEST_F(TodoStoreSyncTest, ALaterChangeIsSavedAndSentAgain) {
    arrive(foreignList(), 5.0);
    start();
    settle();
    store->toggle(numberedId(7));
    settle();
    expectInPreferences(listOf(contents(store->items())), world.clock.now().unixSeconds());
    EXPECT_EQ(end.real(preference_keys::itemsStamp), world.clock.now().unixSeconds());
    EXPECT_EQ(end.writes(), 1);
}

// A store that is gone.

TEST_F(TodoStoreSyncTest, AListThatArrivesAfterTheStoreIsGoneChangesNothing) {
    world.keep({Task("own")}, 1000);
    arrive(listOf({Task("other")}), cloudStamp);
    start();
    store.reset();
    const int writes = world.preferences.writes();
    end.externalChange.emit();
    world.mainExecutor.run();
    EXPECT_EQ(world.preferences.writes(), writes);
    EXPECT_EQ(titles(*World::listIn(world.preferences)), Titles{"own"});

    start(); // Nothing is lost by that: the list waits in the cloud store.
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"other"});
}

TEST_F(TodoStoreSyncTest, AListForAnEarlierStoreDoesNotReachALaterOne) {
    arrive(listOf({Task("other")}), cloudStamp);
    start();
    store.reset();
    world.preferences.set(preference_keys::cloudSync, false);
    start();
    settle();
    EXPECT_TRUE(store->items().empty());
}

// What others hear.

TEST_F(TodoStoreSyncTest, AnnouncesAListThatDiffersOnceAndInOrder) {
    world.keep({Task("own").done()}, 1000);
    arrive(listOf({Task("a"), Task("b")}), cloudStamp);
    start();
    Titles heard;
    const Connection connections[] = {
        store->observeList([&](const ListChange& change) {
            EXPECT_EQ(change.kind, ListChange::Kind::reset);
            EXPECT_EQ(store->items().size(), 2U);
            heard.emplace_back("list");
        }),
        store->doneCount().observe([&](std::int64_t) { heard.emplace_back("done"); }),
        store->activeCount().observe([&](std::int64_t) { heard.emplace_back("active"); }),
        store->lastLocalStamp().observe([&](double) { heard.emplace_back("stamp"); }),
        store->observeAcceptedList([&] {
            EXPECT_EQ(store->activeCount().get(), 2);
            EXPECT_EQ(store->lastLocalStamp().get(), cloudStamp);
            heard.emplace_back("accepted");
        }),
    };
    settle();
    EXPECT_EQ(heard, (Titles{"stamp", "list", "done", "active", "accepted"}));
}

TEST_F(TodoStoreSyncTest, AnEqualListIsNoChangeButItsStampIsTaken) {
    const TodoItem item = Task("same").id(numberedId(7)).made({1.5});
    world.keep({item}, 1000);
    // Equal tasks in other bytes.
    const Data bytes(R"([{"title":"same","isDone":false,"createdAt":15e-1,)"
                     R"("id":"00000000-0000-0000-0000-000000000007"}])");
    arrive(bytes, cloudStamp);
    start();
    int changes = 0;
    int accepted = 0;
    const Connection list = store->observeList([&](const ListChange&) { ++changes; });
    const Connection acceptance = store->observeAcceptedList([&] { ++accepted; });
    settle();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(accepted, 1);
    EXPECT_EQ(store->lastLocalStamp().get(), cloudStamp);
    expectInPreferences(bytes, cloudStamp);
}

TEST_F(TodoStoreSyncTest, CountsNoCompletionAndTouchesNoReminderOfAnotherMachine) {
    world.keep({Task("a").id(numberedId(1)).reminder("r")}, 1000);
    arrive(listOf({Task("a").id(numberedId(1)).reminder("r").done()}), cloudStamp);
    start();
    int told = 0;
    store->addCompletionListener([&](const TodoItem&, Instant) { ++told; });
    const Connection inbox = world.notifications.observe(notifications::inboxZero, [&] { ++told; });
    settle();
    EXPECT_EQ(store->activeCount().get(), 0);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(world.reminders.removed.empty());
}

// What is kept of the list as it was.

class TodoStoreSyncBackupsTest : public TodoStoreSyncTest {
protected:
    std::vector<Titles> keptLists() const {
        std::vector<Titles> lists;
        for (const std::string& name : support::namesIn(folder.path() / "backups"))
            lists.push_back(titles(*decodeStoredItems(support::bytesOf(folder.path() / "backups" / name))));
        return lists;
    }

    CapturedLog log;
    support::TemporaryFolder folder;
    Backups backups{folder.path(), world.clock};
};

TEST_F(TodoStoreSyncBackupsTest, KeepsTheListThatIsReplaced) {
    world.keep({Task("own")}, 1000);
    arrive(listOf({Task("other")}), cloudStamp);
    start(&backups);
    settle();
    EXPECT_EQ(keptLists(), std::vector<Titles>{{"own"}});
}

TEST_F(TodoStoreSyncBackupsTest, KeepsNeitherAnEmptyListNorOneThatStays) {
    start(&backups);
    const Data bytes = listOf({Task("other")});
    for (const double stamp : {cloudStamp, cloudStamp + 1}) {
        arrive(bytes, stamp);
        end.externalChange.emit();
        settle();
        EXPECT_EQ(store->lastLocalStamp().get(), stamp);
    }
    EXPECT_TRUE(keptLists().empty());
}

TEST_F(TodoStoreSyncBackupsTest, SetsADamagedListAsideBeforeAReceivedOneTakesItsPlace) {
    world.preferences.set(preference_keys::items, Data("damaged"));
    arrive(foreignList(), cloudStamp);
    start(&backups);
    settle();
    expectInPreferences(foreignList(), cloudStamp);
    const auto names = support::namesIn(folder.path());
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(support::bytesOf(folder.path() / names[0]), "damaged");
}

TEST_F(TodoStoreSyncBackupsTest, NeverOverwritesADamagedListThatCannotBeSetAside) {
    std::filesystem::remove(folder.path());
    support::writeFile(folder.path(), "no folder, so no room");
    world.preferences.set(preference_keys::items, Data("damaged"));
    arrive(foreignList(), cloudStamp);
    start(&backups);
    EXPECT_TRUE(store->drain());
    world.mainExecutor.run();
    EXPECT_FALSE(store->drain());
    EXPECT_EQ(titles(store->items()), Titles{"foreign"});
    EXPECT_EQ(world.preferences.data(preference_keys::items), Data("damaged"));
}

// Pushing.

TEST_F(TodoStoreSyncTest, PushesTheListUnderTheStampOfItsLastChange) {
    world.preferences.set(preference_keys::cloudSync, false);
    start();
    store->add(Task("own"));
    const double stamp = world.clock.now().unixSeconds();
    settle();
    EXPECT_EQ(end.writes(), 0);
    const int writes = world.preferences.writes();

    world.clock.advance(60);
    store->pushToCloud();
    settle();
    EXPECT_EQ(end.writes(), 1);
    EXPECT_EQ(end.data(preference_keys::items), listOf(contents(store->items())));
    EXPECT_EQ(end.real(preference_keys::itemsStamp), stamp);
    EXPECT_EQ(store->lastLocalStamp().get(), stamp);
    EXPECT_EQ(world.preferences.writes(), writes);
}

TEST_F(TodoStoreSyncTest, PushesTheListAsItWasWhenItWasAsked) {
    world.preferences.set(preference_keys::cloudSync, false);
    end.gate().close();
    start();
    store->add(Task("first"));
    store->pushToCloud();
    store->add(Task("second"));
    end.gate().open();
    settle();
    EXPECT_EQ(titles(*World::listIn(end)), Titles{"first"});
}

TEST_F(TodoStoreSyncTest, PushesNothingThatCannotBeEncoded) {
    const CapturedLog log;
    world.preferences.set(preference_keys::cloudSync, false);
    start();
    store->add(Task("bad").made({std::nan("")}));
    store->pushToCloud();
    EXPECT_FALSE(store->drain());
    EXPECT_EQ(end.writes(), 0);
}

TEST_F(TodoStoreSyncTest, AsksForSendingAfterAPush) {
    TodoStore other(world.dependencies());
    EXPECT_TRUE(other.drain());
    EXPECT_EQ(world.cloud.synchronizations, 1);
    other.pushToCloud();
    EXPECT_TRUE(other.drain());
    EXPECT_EQ(world.cloud.synchronizations, 2);
}

// Threads.

TEST_F(TodoStoreSyncTest, StartingAndNoticesWaitForNothing) {
    arrive(listOf({Task("other")}), cloudStamp);
    end.gate().close(); // From here on whoever waits for the cloud store waits for ever.
    start();
    end.externalChange.emit();
    store->pullFromCloud();
    store->pushToCloud();
    world.mainExecutor.run();
    EXPECT_TRUE(store->items().empty());
    end.gate().open();
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"other"});
}

// Several machines.

TEST(TodoStoreMachines, ChangesTravelThereAndBack) {
    SharedCloud cloud;
    struct Machine {
        explicit Machine(SharedCloud& cloud) : end(cloud) {}
        void settle() {
            EXPECT_TRUE(store.drain());
            world.mainExecutor.run();
            EXPECT_TRUE(store.drain());
        }
        void send() {
            settle();
            end.send();
        }
        void receive() {
            end.fetch();
            end.externalChange.emit();
            settle();
        }

        World world;
        CloudEnd end;
        TodoStore store{
            {world.preferences, end, world.reminders, world.clock, world.notifications, world.mainExecutor}};
    };
    Machine desk(cloud);
    Machine lap(cloud);
    lap.world.clock.advance(-3600);

    desk.store.add(Task("a").id(numberedId(1)));
    desk.send();
    lap.receive();
    EXPECT_EQ(titles(lap.store.items()), Titles{"a"});
    EXPECT_EQ(lap.world.preferences.data(preference_keys::items),
              desk.world.preferences.data(preference_keys::items));

    lap.store.toggle(numberedId(1)); // By a clock an hour behind: not newer for the other machine.
    lap.send();
    desk.receive();
    EXPECT_EQ(desk.store.activeCount().get(), 1);

    lap.world.clock.advance(3601);
    lap.store.add(Task("b"));
    lap.send();
    desk.receive();
    EXPECT_EQ(titles(desk.store.items()), (Titles{"b", "a"}));
    EXPECT_EQ(desk.store.activeCount().get(), 1);
    EXPECT_EQ(contents(desk.store.items()), contents(lap.store.items()));
}

// Which list goes on where the user says so.

class PreferenceTest : public TodoStoreSyncTest {
protected:
    void SetUp() override {
        start(&backups);
        store->add(Task("here").id(numberedId(1)));
        settle();
        here = store->lastLocalStamp().get();
    }
    void TearDown() override { store.reset(); }

    static ReceivedList theirs(const std::vector<TodoItem>& items, double stamp) {
        return {{TaskList(items), stamp}, listOf(items)};
    }

    std::vector<Titles> earlier() const {
        std::vector<Titles> lists;
        for (std::size_t which = 1; which <= backups.listTimes().size(); ++which)
            lists.push_back(titles(*TaskList::decode(*backups.list(which))));
        return lists;
    }

    support::TemporaryFolder folder;
    Backups backups{folder.path(), world.clock};
    double here = 0;
};

TEST_F(PreferenceTest, TheOneHereGoesOnUnderALaterStamp) {
    for (const double theirStamp : {here + 100, here, here - 100}) {
        store->prefer(theirs({Task("there")}, theirStamp).list);
        settle();
        EXPECT_EQ(titles(store->items()), Titles{"here"});
        EXPECT_GT(store->lastLocalStamp().get(), theirStamp);
        EXPECT_EQ(earlier().front(), Titles{"there"});
        expectInPreferences(*store->items().encode(), store->lastLocalStamp().get());
    }
}

TEST_F(PreferenceTest, TheOneHereKeepsItsStampIfThatIsLater) {
    store->prefer(theirs({Task("there")}, here - 100).list);
    EXPECT_EQ(store->lastLocalStamp().get(), here);
    world.clock.advance(10);
    store->prefer(theirs({Task("there")}, here).list);
    EXPECT_EQ(store->lastLocalStamp().get(), world.clock.now().unixSeconds());
}

TEST_F(PreferenceTest, TheOneThereGoesOnAsItIsIfItIsLater) {
    const ReceivedList list = theirs({Task("there")}, here + 100);
    store->takeInstead(list);
    settle();
    EXPECT_EQ(titles(store->items()), Titles{"there"});
    expectInPreferences(list.bytes, here + 100);
    EXPECT_EQ(earlier(), (std::vector<Titles>{{"here"}}));
}

TEST_F(PreferenceTest, TheOneThereGoesOnUnderALaterStampIfItIsNot) {
    for (const double theirStamp : {here, here - 100}) {
        const double before = store->lastLocalStamp().get();
        store->takeInstead(theirs({Task("there")}, theirStamp));
        settle();
        EXPECT_EQ(titles(store->items()), Titles{"there"});
        EXPECT_GT(store->lastLocalStamp().get(), before);
        expectInPreferences(*store->items().encode(), store->lastLocalStamp().get());
    }
    EXPECT_EQ(earlier().back(), Titles{"here"});
}

TEST_F(PreferenceTest, NothingIsKeptOfAListWithoutTasks) {
    store->prefer(theirs({}, here + 100).list);
    settle();
    EXPECT_EQ(earlier(), std::vector<Titles>{});
}

} // namespace
} // namespace quillo
