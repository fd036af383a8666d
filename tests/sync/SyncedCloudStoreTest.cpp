#include "sync/SyncedCloudStore.h"

#include "ports/Preferences.h"
#include "support/AwaitingExecutor.h"
#include "support/CapturedLog.h"
#include "support/FixedClock.h"
#include "support/Gate.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <chrono>
#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What is at a place that is no disk and no network, and how to get there.
struct ScriptedPlace {
    std::mutex mutex;
    std::vector<double> sent; ///< stamps
    std::optional<StampedBytes> there;
    Outcome outcome = success();
    support::Gate gate;
    int exchanges = 0;
};

class ScriptedCarrier : public Carrier {
public:
    explicit ScriptedCarrier(std::shared_ptr<ScriptedPlace> place) : place_(std::move(place)) {}

    Exchange exchange(Mirror& mirror) override {
        place_->gate.pass();
        const std::lock_guard lock(place_->mutex);
        ++place_->exchanges;
        Exchange exchange;
        exchange.outcome = place_->outcome;
        if (!exchange.outcome)
            return exchange;
        if (const auto outgoing = mirror.outgoing();
            outgoing && !(place_->there && outgoing->stamp <= place_->there->stamp)) {
            place_->sent.push_back(outgoing->stamp);
            place_->there = outgoing;
        }
        exchange.changed = mirror.receive(place_->there);
        if (place_->there)
            exchange.devices = {{{Uuid{}, "peer", "app"}, place_->there->stamp}};
        return exchange;
    }

    void awaitNews(int wake) override {
        pollfd source{wake, POLLIN, 0};
        poll(&source, 1, -1);
    }

    Result<DeviceFile> fileOf(const Uuid& /*device*/) override { return Error{"nobody asks for it"}; }
    Outcome forget(const Uuid& /*device*/, double /*stamp*/) override { return Error{"nobody asks for it"}; }

private:
    const std::shared_ptr<ScriptedPlace> place_;
};

StampedBytes listOf(double stamp) {
    return {Data("[" + std::to_string(stamp) + "]"), stamp};
}

std::vector<Change> changesFor(const StampedBytes& list) {
    return {{std::string(preference_keys::items), list.items},
            {std::string(preference_keys::itemsStamp), list.stamp}};
}

class SyncedCloudStoreTest : public testing::Test {
protected:
    void use() {
        store_ = std::make_unique<SyncedCloudStore>(folder_.path(), executor_, clock_,
                                                    std::make_unique<ScriptedCarrier>(place_));
        connections_.push_back(store_->externalChange.connect([this] { ++changes_; }));
        connections_.push_back(store_->exchanged.connect([this] { ++exchanges_; }));
    }

    void put(double stamp) const {
        store_->apply(changesFor(listOf(stamp)));
        store_->synchronize();
    }

    double stamp() const { return store_->real(preference_keys::itemsStamp).value_or(-1); }
    std::string items() const {
        const auto items = store_->data(preference_keys::items);
        return items ? std::string(items->bytes()) : "";
    }

    /// Returns when an exchange has been told of that began after this call.
    void exchange() {
        bool told = false;
        store_->exchange([&](const Outcome&) { told = true; });
        EXPECT_TRUE(executor_.runUntil([&] { return told; }));
    }

    std::vector<double> sent() const {
        const std::lock_guard lock(place_->mutex);
        return place_->sent;
    }
    void arrives(const StampedBytes& list) const {
        const std::lock_guard lock(place_->mutex);
        place_->there = list;
    }
    void fails(const Outcome& outcome) const {
        const std::lock_guard lock(place_->mutex);
        place_->outcome = outcome;
    }

    support::CapturedLog log_;
    support::TemporaryFolder folder_;
    support::FixedClock clock_;
    support::AwaitingExecutor executor_;
    std::shared_ptr<ScriptedPlace> place_ = std::make_shared<ScriptedPlace>();
    int changes_ = 0;
    int exchanges_ = 0;
    std::vector<Connection> connections_;
    std::unique_ptr<SyncedCloudStore> store_;
};

TEST_F(SyncedCloudStoreTest, WithoutAPlaceKeepsWhatWasPutAndReportsNothing) {
    SyncedCloudStore store(folder_.path(), executor_, clock_);
    const Connection connection = store.externalChange.connect([] { FAIL(); });
    store.apply(changesFor(listOf(5)));
    store.synchronize();
    EXPECT_FALSE(store.hasPlace());
    EXPECT_EQ(store.real(preference_keys::itemsStamp), 5);
    EXPECT_FALSE(executor_.awaitWork(std::chrono::seconds(0)));
    Outcome outcome = success();
    store.exchange([&](const Outcome& told) { outcome = told; });
    EXPECT_FALSE(outcome);
    EXPECT_THAT(support::namesIn(folder_.path()), IsEmpty());
}

TEST_F(SyncedCloudStoreTest, SendsAndFetchesAtTheStart) {
    arrives(listOf(10));
    use();
    EXPECT_TRUE(executor_.runUntil([&] { return exchanges_ == 1; }));
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(stamp(), 10);
    EXPECT_EQ(items(), std::string(listOf(10).items.bytes()));
}

TEST_F(SyncedCloudStoreTest, GivesTheListAndTheStampOfTheLatest) {
    use();
    put(20);
    EXPECT_EQ(std::pair(stamp(), items()), std::pair(20.0, std::string(listOf(20).items.bytes())));
    exchange();
    EXPECT_THAT(sent(), ElementsAre(20));
    EXPECT_EQ(changes_, 0);
    arrives(listOf(30));
    exchange();
    EXPECT_EQ(stamp(), 30);
    EXPECT_EQ(changes_, 1);
    put(25);
    EXPECT_EQ(std::pair(stamp(), items()), std::pair(30.0, std::string(listOf(30).items.bytes())));
}

TEST_F(SyncedCloudStoreTest, OfEqualStampsItsOwnCounts) {
    arrives({Data("[]"), 10});
    use();
    exchange();
    put(10);
    EXPECT_EQ(items(), std::string(listOf(10).items.bytes()));
}

TEST_F(SyncedCloudStoreTest, TakesOnlyAListWithASoundStamp) {
    use();
    put(10);
    const std::string key(preference_keys::itemsStamp);
    store_->apply({{std::string(preference_keys::items), Data("[1]")}});
    store_->apply({{key, 11.0}});
    store_->apply({{std::string(preference_keys::items), Data("[1]")}, {key, std::int64_t{11}}});
    for (const double stamp :
         {-1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        store_->apply({{std::string(preference_keys::items), Data("[1]")}, {key, stamp}});
    EXPECT_EQ(stamp(), 10);
    EXPECT_EQ(items(), std::string(listOf(10).items.bytes()));
    EXPECT_FALSE(store_->value("another key"));
}

TEST_F(SyncedCloudStoreTest, NeverWaitsForThePlace) {
    place_->gate.close();
    use();
    place_->gate.waitForArrival();
    for (double stamp = 1; stamp < 100; ++stamp)
        put(stamp);
    EXPECT_EQ(stamp(), 99);
    EXPECT_FALSE(store_->await(std::chrono::milliseconds(1)));
    place_->gate.open();
    EXPECT_TRUE(store_->await(std::chrono::seconds(60)));
    EXPECT_LE(sent().size(), 2U);
    EXPECT_EQ(sent().back(), 99);
}

TEST_F(SyncedCloudStoreTest, IsGoneSoonWhateverThePlaceDoes) {
    place_->gate.close();
    use();
    put(1);
    place_->gate.waitForArrival();
    const auto began = std::chrono::steady_clock::now();
    store_.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(10));
    place_->gate.open();
    // Once the place answers again, nobody hears of it.
    const std::lock_guard lock(place_->mutex);
    EXPECT_EQ(exchanges_, 0);
}

TEST_F(SyncedCloudStoreTest, GivesWhatIsNotSentYetAMoment) {
    use();
    exchange();
    put(7);
    store_.reset();
    EXPECT_THAT(sent(), ElementsAre(7));
}

TEST_F(SyncedCloudStoreTest, HoldsBack) {
    use();
    store_->holdBack(true);
    put(7);
    exchange();
    EXPECT_EQ(stamp(), 7);
    EXPECT_THAT(sent(), IsEmpty());
    store_->holdBack(false);
    exchange();
    EXPECT_THAT(sent(), ElementsAre(7));
}

TEST_F(SyncedCloudStoreTest, KeepsItsStatusForCommands) {
    arrives(listOf(10));
    use();
    exchange();
    const SyncStatus expected{clock_.now(), std::nullopt, {{{Uuid{}, "peer", "app"}, 10}}};
    EXPECT_EQ(store_->status(), expected);
    EXPECT_EQ(readSyncStatus(folder_.path()), expected);

    clock_.advance(100);
    fails(Error{"it rains"});
    exchange();
    const SyncStatus failed{expected.lastInStep, "it rains", expected.devices};
    EXPECT_EQ(store_->status(), failed);
    store_.reset();
    use();
    exchange();
    EXPECT_EQ(store_->status(), failed) << "forgets when it was in step last";
    EXPECT_EQ(readSyncStatus(folder_.path()), failed);
}

TEST_F(SyncedCloudStoreTest, TellsOfAnExchangeThatBeganAfterTheQuestion) {
    place_->gate.close();
    use();
    place_->gate.waitForArrival();
    fails(Error{"it rains"});
    Outcome outcome = success();
    bool told = false;
    store_->exchange([&](const Outcome& what) {
        outcome = what;
        told = true;
    });
    place_->gate.open();
    EXPECT_TRUE(executor_.runUntil([&] { return told; }));
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().message, "it rains");
    EXPECT_EQ(place_->exchanges, 2);
}

TEST_F(SyncedCloudStoreTest, LooksAtAnotherPlaceWithoutTouchingEither) {
    use();
    put(7);
    exchange();
    const auto other = std::make_shared<ScriptedPlace>();
    other->there = listOf(5);
    std::optional<StampedBytes> found;
    bool told = false;
    store_->lookAt(std::make_unique<ScriptedCarrier>(other),
                   [&](const Result<std::optional<StampedBytes>>& what) {
                       found = *what;
                       told = true;
                   });
    EXPECT_TRUE(executor_.runUntil([&] { return told; }));
    EXPECT_EQ(found, listOf(5));
    exchange();
    EXPECT_EQ(stamp(), 7);
    EXPECT_THAT(other->sent, IsEmpty());
    const SyncStatus status = readSyncStatus(folder_.path());
    ASSERT_EQ(status.devices.size(), 1U);
    EXPECT_EQ(status.devices.front().stamp, 7);
}

TEST_F(SyncedCloudStoreTest, UsesThePlaceThatItHasLookedAt) {
    use();
    put(7);
    const auto other = std::make_shared<ScriptedPlace>();
    bool told = false;
    store_->lookAt(std::make_unique<ScriptedCarrier>(other), [&](const auto& found) {
        EXPECT_FALSE(*found);
        store_->useLookedAt();
        told = true;
    });
    EXPECT_TRUE(executor_.runUntil([&] { return told; }));
    EXPECT_EQ(stamp(), -1);
    put(8);
    exchange();
    EXPECT_THAT(other->sent, ElementsAre(8));
    store_->use(nullptr);
    EXPECT_FALSE(store_->hasPlace());
    put(9);
    EXPECT_THAT(other->sent, ElementsAre(8));
}

TEST_F(SyncedCloudStoreTest, SaysWhyAPlaceCannotBeLookedAt) {
    SyncedCloudStore store(folder_.path(), executor_, clock_);
    fails(Error{"it rains"});
    std::string why;
    store.lookAt(std::make_unique<ScriptedCarrier>(place_),
                 [&](const auto& found) { why = found ? "" : found.error().message; });
    EXPECT_TRUE(executor_.runUntil([&] { return !why.empty(); }));
    EXPECT_EQ(why, "it rains");
    EXPECT_THAT(support::namesIn(folder_.path()), IsEmpty());
}

TEST(SyncStatus, IsReadAsItIsWritten) {
    const SyncStatus status{
        Instant{762774060.5}, "the \"folder\"\n", {{{support::numberedId(1), "é", ""}, 1.5}, {{}, 0}}};
    EXPECT_EQ(decodeSyncStatus(encodeSyncStatus(status)), status);
    EXPECT_EQ(decodeSyncStatus(encodeSyncStatus({})), SyncStatus{});
}

TEST(SyncStatus, ThatCannotBeReadIsNone) {
    for (const char* bytes : {"", "{", "[]", "{}", R"({"devices":7})", R"({"devices":[{}]})",
                              R"({"devices":[{"device":"x","name":"","app":"","stamp":1}]})"})
        EXPECT_FALSE(decodeSyncStatus(bytes)) << bytes;
    const support::TemporaryFolder folder;
    EXPECT_EQ(readSyncStatus(folder.path()), SyncStatus{});
    support::writeFile(folder.path() / "sync-status.json", std::string(2 << 20, ' '));
    EXPECT_EQ(readSyncStatus(folder.path()), SyncStatus{});
}

} // namespace
} // namespace quillo
