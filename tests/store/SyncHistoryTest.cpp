// Random histories of several machines with skewed clocks around one cloud. After every step each machine is
// held against the rules, written down once more here as plainly as can be; at the end of each history
// everything is delivered, and machines that speak of the same stamp must hold the same list.
//
// QUILLO_SYNC_SEED=<number> starts with the history of that number, QUILLO_SYNC_HISTORIES=<number> plays so
// many.
#include "store/TodoStore.h"
#include "store/World.h"
#include "support/CapturedLog.h"
#include "support/SharedCloud.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>

namespace quillo {
namespace {

using support::CloudEnd;
using support::contents;
using support::SharedCloud;
using support::Task;
using support::World;
using Items = std::vector<TodoItem>;

/// A list as it travels, under its stamp.
struct Pair {
    std::string bytes;
    double stamp = 0;
};

std::vector<Change> changesFor(const Value& list, const std::optional<Value>& stamp) {
    return {{std::string(preference_keys::items), list}, {std::string(preference_keys::itemsStamp), stamp}};
}

/// What stands in the place of the stamp, as the rules read it: foreign values are as good as none.
double stampIn(const KeyValueStore& store) {
    const auto stamp = store.real(preference_keys::itemsStamp);
    return stamp && *stamp > 0 && std::isfinite(*stamp) ? *stamp : 0;
}

std::optional<Items> itemsIn(const std::optional<Data>& data) {
    return data ? decodeStoredItems(data->bytes()) : std::nullopt;
}

/// What became of the lists that arrived on a main thread.
struct Arrivals {
    std::size_t accepted = 0;
    std::size_t different = 0; ///< of the accepted ones: lists other than the one before
    std::size_t refused = 0;
};

/// The rules, for one machine: its list in memory and in the preferences, and what it has set about and not
/// done yet.
struct Rules {
    struct Save {
        Pair pair;
        bool toCloud;
    };
    struct Pull {
        double localStamp;
    };
    struct Push {
        Pair pair;
    };
    struct Adoption {
        Pair pair;
    };
    using Job = std::variant<Save, Pull, Push, Adoption>;

    Items items;
    double stamp = 0;
    std::optional<std::string> keptBytes;
    double keptStamp = 0;
    bool sync = true;
    std::deque<Job> queue;
    std::deque<Pair> arriving;

    void load() {
        const auto kept = keptBytes ? decodeStoredItems(*keptBytes) : std::nullopt;
        items = kept.value_or(Items{});
        stamp = kept ? keptStamp : 0;
        if (sync)
            pull();
    }

    void changed(double now) {
        stamp = now;
        queue.push_back(Save{pair(), sync});
    }
    void pull() { queue.push_back(Pull{stamp}); }
    void notice() {
        if (sync)
            pull();
    }
    void push() { queue.push_back(Push{pair()}); }

    Pair pair() const { return {*encodeStoredItems(items), stamp}; }

    /// What the queue does to the preferences and to `cloud`, which is this machine's view of it; returns how
    /// many of its jobs write to the cloud.
    int runQueue(support::InMemoryCloudStore& cloud) {
        int cloudWrites = 0;
        const auto upload = [&](const Pair& pair) {
            cloud.apply(changesFor(Data(pair.bytes), pair.stamp));
            ++cloudWrites;
        };
        const auto keep = [&](const Pair& pair) {
            keptBytes = pair.bytes;
            keptStamp = pair.stamp;
        };
        for (const Job& job : std::exchange(queue, {})) {
            if (const auto* save = std::get_if<Save>(&job)) {
                keep(save->pair);
                if (save->toCloud)
                    upload(save->pair);
            } else if (const auto* pull = std::get_if<Pull>(&job)) {
                const auto bytes = cloud.data(preference_keys::items);
                if (pull->localStamp < stampIn(cloud) && itemsIn(bytes))
                    arriving.push_back({std::string(bytes->bytes()), stampIn(cloud)});
            } else if (const auto* push = std::get_if<Push>(&job)) {
                upload(push->pair);
            } else {
                keep(std::get<Adoption>(job).pair);
            }
        }
        return cloudWrites;
    }

    Arrivals runMain() {
        Arrivals arrivals;
        for (const Pair& received : std::exchange(arriving, {})) {
            if (received.stamp <= stamp) {
                ++arrivals.refused;
                continue;
            }
            const Items list = *decodeStoredItems(received.bytes);
            ++arrivals.accepted;
            arrivals.different += list == items ? 0 : 1;
            items = list;
            stamp = received.stamp;
            queue.push_back(Adoption{received});
        }
        return arrivals;
    }
};

/// A store, the rules it is held against, and its surroundings. Its queue stands still but in runQueue() and
/// when the store ends.
class Machine {
public:
    Machine(SharedCloud& cloud, double skew) : end_(cloud), skew_(skew) {
        end_.gate().close();
        start();
    }
    ~Machine() { end_.gate().open(); }

    Rules& rules() { return rules_; }
    const Rules& rules() const { return rules_; }
    CloudEnd& end() { return end_; }
    TodoStore& store() { return *store_; }

    void setTime(double time) { world_.clock.set(Instant::fromUnixSeconds(time + skew_)); }
    void setSkew(double skew) { skew_ = skew; }
    double now() const { return world_.clock.now().unixSeconds(); }
    Instant instant() const { return world_.clock.now(); }

    void setSync(const std::optional<Value>& value) {
        world_.preferences.apply({{std::string(preference_keys::cloudSync), value}});
        rules_.sync = !value || *value != Value(false);
    }

    void notice() {
        rules_.notice();
        end_.externalChange.emit();
    }
    void push() {
        rules_.push();
        store_->pushToCloud();
    }

    void runQueue() {
        const int writes = end_.writes();
        support::InMemoryCloudStore view;
        const int cloudWrites = predict(view);
        end_.gate().open();
        EXPECT_TRUE(store_->drain());
        end_.gate().close();
        checkKept(view);
        // Of saves that wait one behind the other the last one stands for all.
        EXPECT_LE(end_.writes() - writes, cloudWrites) << "something was written back";
        EXPECT_EQ(end_.writes() > writes, cloudWrites > 0);
    }

    Arrivals runMain() {
        accepted_ = resets_ = 0;
        const Arrivals arrivals = rules_.runMain();
        const Connection stamps =
            store_->lastLocalStamp().observe([last = store_->lastLocalStamp().get()](double stamp) mutable {
                EXPECT_GT(stamp, last) << "accepted what is not newer";
                last = stamp;
            });
        world_.mainExecutor.run();
        EXPECT_EQ(accepted_, arrivals.accepted);
        EXPECT_EQ(resets_, arrivals.different);
        return arrivals;
    }

    /// Ends the store in the middle of whatever it does, and starts one anew. If `damage`, what it kept is
    /// unreadable by then. Returns with the new one's pull waiting.
    void restart(bool damage) {
        support::InMemoryCloudStore view;
        predict(view);
        end_.gate().open();
        store_.reset();
        checkKept(view);
        end_.gate().close();
        rules_.arriving.clear(); // What is still to arrive finds nobody.
        if (damage) {
            rules_.keptBytes = "[{]";
            world_.preferences.set(preference_keys::items, Data(*rules_.keptBytes));
        }
        start();
    }

    /// Memory, at any time.
    void check() const {
        EXPECT_EQ(contents(store_->items()), rules_.items);
        EXPECT_EQ(store_->lastLocalStamp().get(), rules_.stamp);
        const auto done = std::count_if(rules_.items.begin(), rules_.items.end(),
                                        [](const TodoItem& item) { return item.isDone; });
        EXPECT_EQ(store_->doneCount().get(), done);
        EXPECT_EQ(store_->activeCount().get() + done, static_cast<std::int64_t>(rules_.items.size()));
    }

private:
    void start() {
        store_ = std::make_unique<TodoStore>(TodoStoreDependencies{world_.preferences, end_, world_.reminders,
                                                                   world_.clock, world_.notifications,
                                                                   world_.mainExecutor});
        rules_.load();
        acceptance_ = store_->observeAcceptedList([this] { ++accepted_; });
        list_ = store_->observeList(
            [this](const ListChange& change) { resets_ += change.kind == ListChange::Kind::reset ? 1 : 0; });
    }

    int predict(support::InMemoryCloudStore& view) {
        for (const std::string_view key : {preference_keys::items, preference_keys::itemsStamp}) {
            if (const auto value = end_.value(key))
                view.set(key, *value);
        }
        return rules_.runQueue(view);
    }

    /// The preferences and this end of the cloud, once the queue is empty.
    void checkKept(const support::InMemoryCloudStore& view) const {
        for (const std::string_view key : {preference_keys::items, preference_keys::itemsStamp}) {
            // As text, because not even a value that is no number equals itself.
            EXPECT_EQ(describe(end_.value(key)), describe(view.value(key)));
        }
        const auto bytes = world_.preferences.data(preference_keys::items);
        EXPECT_EQ(bytes ? std::optional(bytes->bytes()) : std::nullopt, rules_.keptBytes);
        EXPECT_EQ(world_.preferences.real(preference_keys::itemsStamp).value_or(0), rules_.keptStamp);
        // Whatever the rules above say: what is kept is what is in memory.
        if (const auto kept = itemsIn(bytes)) {
            EXPECT_EQ(*kept, rules_.items);
            EXPECT_EQ(rules_.keptStamp, rules_.stamp);
        }
    }

    static std::string describe(const std::optional<Value>& value) {
        std::ostringstream text;
        text.precision(17);
        if (value) {
            text << value->index() << ' ';
            if (const auto* data = std::get_if<Data>(&*value))
                text << data->bytes();
            else
                std::visit(
                    [&text](const auto& plain) {
                        if constexpr (!std::is_same_v<decltype(plain), const Data&>)
                            text << plain;
                    },
                    *value);
        }
        return text.str();
    }

    World world_;
    CloudEnd end_;
    double skew_;
    Rules rules_;
    std::size_t accepted_ = 0;
    std::size_t resets_ = 0;
    std::unique_ptr<TodoStore> store_;
    Connection acceptance_;
    Connection list_;
};

/// What was looked at in all histories together, so that none of the checks goes hungry unnoticed.
struct Tally {
    std::size_t steps = 0;
    std::size_t accepted = 0;
    std::size_t refused = 0;
    std::size_t equalStamps = 0;
    std::size_t converged = 0;
};

class History {
public:
    History(std::uint64_t seed, Tally& tally)
        : random_(seed), cloud_(oneIn(2) ? SharedCloud::Keeps::lastSent : SharedCloud::Keeps::highestStamp),
          tally_(tally) {
        const double skews[] = {0, 0, 0.125, 90, -90, 86400};
        for (std::size_t count = 2 + below(3); count > 0; --count)
            machines_.push_back(std::make_unique<Machine>(cloud_, skews[below(std::size(skews))]));
        story_.precision(16);
        passTime();
    }

    void play() {
        for (std::size_t step = 10 + below(40); step > 0 && !testing::Test::HasFailure(); --step) {
            if (oneIn(changesOneIn_))
                changeSomething(machine());
            else
                doSomething(machine());
            ++tally_.steps;
            for (const auto& each : machines_)
                each->check();
        }
        if (!testing::Test::HasFailure())
            finish();
    }

    /// What has happened, a line each.
    std::string story() const { return story_.str(); }

private:
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(random_() % count); }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    Machine& machine() {
        const std::size_t index = below(machines_.size());
        story_ << "machine " << index << ": ";
        return *machines_[index];
    }

    /// Often none at all: clocks show the same time more than once.
    void passTime() {
        time_ += tick_ * static_cast<double>(below(4));
        for (const auto& each : machines_)
            each->setTime(time_);
    }

    void changeSomething(Machine& machine) {
        passTime();
        Rules& rules = machine.rules();
        const std::size_t kind = rules.items.empty() ? 0 : below(5);
        const std::size_t index = rules.items.empty() ? 0 : below(rules.items.size());
        story_ << "change " << kind << " at " << index << ", stamp " << machine.now() << '\n';
        if (kind == 0) {
            ++tasks_;
            const TodoItem item = Task(std::to_string(tasks_)).id(support::numberedId(tasks_));
            rules.items.insert(rules.items.begin(), item);
            rules.changed(machine.now());
            machine.store().add(item);
        } else if (kind == 1) {
            TodoItem& item = rules.items[index];
            item.isDone = !item.isDone;
            item.completedAt = item.isDone ? std::optional(machine.instant()) : std::nullopt;
            rules.changed(machine.now());
            machine.store().toggle(item.id);
        } else if (kind == 2) {
            TodoItem& item = rules.items[index];
            item.title += "'";
            rules.changed(machine.now());
            machine.store().update(item);
        } else if (kind == 3) {
            const Uuid id = rules.items[index].id;
            rules.items.erase(rules.items.begin() + static_cast<std::ptrdiff_t>(index));
            rules.changed(machine.now());
            machine.store().remove(id);
        } else {
            std::erase_if(rules.items, [](const TodoItem& item) { return item.isDone; });
            rules.changed(machine.now());
            machine.store().clearCompleted();
        }
        note(rules.pair());
    }

    void doSomething(Machine& machine) {
        const auto tell = [this](const char* what) { story_ << what << '\n'; };
        const std::size_t kind = below(20);
        if (kind < 3) {
            tell("runs its queue");
            machine.runQueue();
            if (kind > 0)
                machine.end().send();
        } else if (kind < 6) {
            tell("runs its main thread");
            count(machine.runMain());
        } else if (kind == 6) {
            tell("sends");
            machine.end().send();
        } else if (kind == 7) {
            tell("fetches; the notice is late or lost");
            machine.end().fetch();
        } else if (kind == 8) {
            tell("gets a notice, perhaps once more, perhaps without news");
            machine.notice();
        } else if (kind < 14) {
            tell("fetches and gets a notice");
            machine.end().fetch();
            machine.notice();
            if (kind > 9) {
                tell("  and reads what is new, which waits for the main thread now");
                machine.runQueue();
            }
        } else if (kind == 14) {
            tell("gets half of what is new");
            machine.end().fetchOnly(preference_keys::items);
            if (const auto bytes = machine.end().data(preference_keys::items))
                note({std::string(bytes->bytes()), stampIn(machine.end())});
        } else if (kind == 15) {
            const std::optional<Value> settings[] = {
                Value(true),           Value(true), Value(false), std::nullopt, Value(std::string("no")),
                Value(std::int64_t{0})};
            machine.setSync(settings[below(std::size(settings))]);
            tell(machine.rules().sync ? "turns sync on" : "turns sync off");
        } else if (kind == 16) {
            tell("pushes");
            machine.push();
            note(machine.rules().pair());
        } else if (kind == 17) {
            tell("restarts");
            machine.restart(oneIn(8));
        } else if (kind == 18) {
            tell("watches how something foreign comes into the cloud");
            putForeign();
        } else {
            tell("sets its clock");
            machine.setSkew(-60.0 + 0.125 * static_cast<double>(below(1000)));
        }
    }

    /// What another program or another version might leave in the cloud.
    void putForeign() {
        const double infinity = std::numeric_limits<double>::infinity();
        const std::string number = std::to_string(++tasks_);
        const std::string list = R"([ {"title": "f)" + number +
                                 R"(", "x": {"y": [1, null]}, "createdAt": 1e1,)" +
                                 R"( "isDone": false, "dueDate": null, "id": ")" +
                                 support::numberedId(tasks_).toString() + "\"} ]";
        const double stamp = time_ + static_cast<double>(below(8)) - 4;
        const Value lists[] = {Data(list), Data(list),  Data(list), Data(list),
                               Data("[]"), Data("[{]"), Data(""),   Value(std::string("[]"))};
        const std::optional<Value> stamps[] = {stamp,    stamp,     stamp,        stamp, -stamp,      0.0,
                                               infinity, -infinity, std::nan(""), {},    Value(false)};
        const Value& chosenList = lists[below(std::size(lists))];
        const std::optional<Value>& chosenStamp = stamps[below(std::size(stamps))];
        cloud_.put(changesFor(chosenList, chosenStamp));
        if (const auto* data = std::get_if<Data>(&chosenList))
            note({std::string(data->bytes()), stamp});
    }

    void count(const Arrivals& arrivals) {
        tally_.accepted += arrivals.accepted;
        tally_.refused += arrivals.refused;
    }

    void note(const Pair& pair) { madeUnder_[pair.stamp].insert(pair.bytes); }

    /// Brings everything everywhere. Once is enough, as accepting a list sends nothing.
    void deliver() {
        for (const auto& each : machines_) {
            settle(*each);
            each->end().send();
        }
        for (const auto& each : machines_) {
            each->end().fetch();
            each->notice();
            settle(*each);
        }
    }

    void settle(Machine& machine) {
        machine.runQueue();
        count(machine.runMain());
        machine.runQueue();
        machine.check();
    }

    void finish() {
        deliver();
        compareMachines();
        for (const auto& each : machines_) {
            each->setSync(true);
            each->push();
            note(each->rules().pair());
        }
        deliver();
        compareMachines();

        CloudEnd view(cloud_);
        view.fetch();
        if (!itemsIn(view.data(preference_keys::items)) || stampIn(view) == 0)
            return;
        for (const auto& each : machines_)
            EXPECT_GE(each->rules().stamp, stampIn(view)) << "missed a newer list";
        // Where the newest list stays in the cloud, all machines must end with it.
        if (cloud_.keeps() == SharedCloud::Keeps::highestStamp) {
            ++tally_.converged;
            for (const auto& each : machines_)
                EXPECT_EQ(each->rules().stamp, stampIn(view));
        }
    }

    void compareMachines() {
        for (const auto& one : machines_) {
            for (const auto& other : machines_) {
                const Rules& left = one->rules();
                const Rules& right = other->rules();
                // Not so where several lists were made under that stamp, by clocks that showed the same.
                if (one == other || left.stamp != right.stamp || madeUnder_[left.stamp].size() != 1 ||
                    left.stamp == 0)
                    continue;
                ++tally_.equalStamps;
                EXPECT_EQ(left.items, right.items);
                EXPECT_EQ(left.keptBytes, right.keptBytes);
            }
        }
    }

    std::mt19937_64 random_;
    SharedCloud cloud_;
    Tally& tally_;
    std::vector<std::unique_ptr<Machine>> machines_;
    double time_ = 1'741'081'260;
    const double tick_ = oneIn(2) ? 0.125 : 64; ///< of time: so that the clocks differ by much, or by little
    std::uint32_t tasks_ = 0;
    const std::size_t changesOneIn_ = 2 + below(15); ///< how busy the users are
    std::map<double, std::set<std::string>> madeUnder_;
    std::ostringstream story_;
};

std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
    const char* text = std::getenv(variable);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

TEST(SyncHistory, EveryMachineFollowsTheRules) {
    const support::CapturedLog log;
    const std::uint64_t first = numberFrom("QUILLO_SYNC_SEED", std::random_device{}());
    const std::uint64_t histories = numberFrom("QUILLO_SYNC_HISTORIES", 2000);
    Tally tally;
    for (std::uint64_t seed = first; seed < first + histories; ++seed) {
        History history(seed, tally);
        history.play();
        ASSERT_FALSE(HasFailure()) << "repeat with QUILLO_SYNC_SEED=" << seed << '\n' << history.story();
    }
    std::cout << tally.steps << " steps, " << tally.accepted << " lists accepted, " << tally.refused
              << " refused on arrival, " << tally.equalStamps << " pairs of equal stamps, " << tally.converged
              << " histories that end in one list\n";
    if (histories >= 100) {
        EXPECT_GT(tally.accepted, 0U);
        EXPECT_GT(tally.refused, 0U);
        EXPECT_GT(tally.equalStamps, 0U);
        EXPECT_GT(tally.converged, 0U);
    }
}

} // namespace
} // namespace quillo
