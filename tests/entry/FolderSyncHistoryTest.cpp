// A random history of three computers that keep their lists in step through a folder. Each has its own copy
// of the folder, between which the test carries files as a tool for that does: late, out of order, by halves,
// with conflict copies. Clocks are skewed and are set, programs are killed at any instant. After every step
// each computer is held against the rules, written down once more here as plainly as can be; at the end all
// must hold the list with the highest stamp, and every list that was replaced must be among the earlier ones.
//
// QUILLO_SYNC_SEED=<number> plays the history of that number, QUILLO_SYNC_STEPS=<number> so many steps.
#include "base/ManualExecutor.h"
#include "base/NotificationCenter.h"
#include "entry/SyncCommands.h"
#include "model/TodoItemJson.h"
#include "support/CapturedLog.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"
#include "sync/MakeCarrier.h"
#include "sync/ThisDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace quillo {
namespace {

namespace fs = std::filesystem;
using Items = std::vector<TodoItem>;

/// A list under its stamp, as its bytes.
struct Version {
    std::string bytes = "[]";
    double stamp = 0;

    friend bool operator==(const Version&, const Version&) = default;
};

/// Preferences whose writing lags behind: what a crash finds on the disk is some earlier state of them.
class LaggingPreferences : public support::InMemoryPreferences {
    using Base = support::InMemoryPreferences;

public:
    void apply(std::vector<Change> changes) override {
        {
            const std::lock_guard lock(unwrittenMutex_);
            unwritten_.push_back(changes);
        }
        Base::apply(std::move(changes));
    }

    /// All is on the disk by now.
    void write() { written_ = unwrittenWith(written_, unwritten_.size()); }

    /// What a program finds that starts after a crash, `count` of the writes having made it to the disk.
    std::unique_ptr<LaggingPreferences> afterCrash(std::size_t count) {
        auto found = std::make_unique<LaggingPreferences>();
        found->written_ = unwrittenWith(written_, count);
        for (const auto& [key, value] : found->written_)
            found->Base::apply({{key, value}});
        return found;
    }

    std::size_t unwritten() const { return unwritten_.size(); }

private:
    using Values = std::map<std::string, Value>;

    Values unwrittenWith(Values values, std::size_t count) {
        for (; count > 0; --count) {
            for (const Change& change : unwritten_.front()) {
                if (change.value)
                    values.insert_or_assign(change.key, *change.value);
                else
                    values.erase(change.key);
            }
            unwritten_.pop_front();
        }
        return values;
    }

    std::mutex unwrittenMutex_;
    std::deque<std::vector<Change>> unwritten_;
    Values written_;
};

/// The rules, for one computer.
struct Rules {
    std::size_t self = 0;
    Version memory;
    std::optional<Version> own; ///< what was given to the others last, since the start
    std::map<std::size_t, std::optional<Version>> files; ///< in its copy of the folder; empty: not readable
    std::deque<std::string> earlier;                     ///< the latest first
    bool on = true;

    void change(std::string bytes, double stamp) {
        memory = {std::move(bytes), stamp};
        if (on)
            own = memory;
    }

    void keepEarlier(const std::string& bytes) {
        earlier.push_front(bytes);
        if (earlier.size() > Backups::keptLists)
            earlier.pop_back();
    }

    std::optional<Version> found() const {
        std::optional<Version> best;
        for (const auto& [device, file] : files) {
            if (file && (!best || best->stamp < file->stamp))
                best = file;
        }
        return best;
    }

    void send() {
        auto& file = files[self];
        if (own && (!file || file->stamp <= own->stamp))
            file = own;
        if (!file && !own)
            files.erase(self);
    }

    /// Until nothing moves any more. Returns how often a list was taken over.
    std::size_t settle() {
        std::size_t accepted = 0;
        for (;;) {
            send();
            const std::optional<Version> there = found();
            const std::optional<Version> latest = own && (!there || there->stamp <= own->stamp) ? own : there;
            if (!on)
                return accepted;
            if (latest && memory.stamp < latest->stamp) {
                if (latest->bytes != memory.bytes && memory.bytes != "[]")
                    keepEarlier(memory.bytes);
                memory = *latest;
                ++accepted;
            } else if ((latest ? latest->stamp : 0) < memory.stamp) {
                own = memory;
            } else {
                return accepted;
            }
        }
    }
};

/// A computer: the program that runs on it, what is on its disks, and the rules it is held against.
class Computer {
public:
    Computer(const fs::path& place, std::size_t number) : home_(place / "home"), root_(place / "folder") {
        fs::create_directories(home_);
        fs::create_directories(folder());
        rules_.self = number;
        preferences_->set(preference_keys::syncPlace, toText(SyncedFolder{root_}));
        start();
        id_ = thisId();
        preferences_->write();
    }

    Rules& rules() { return rules_; }
    TodoStore& store() { return running_->store; }
    const Uuid& id() const { return id_; }
    fs::path folder() const { return root_ / "quillo" / "v1"; }
    fs::path fileOf(const Uuid& device) const { return folder() / deviceFileName(device); }
    support::FixedClock& clock() { return clock_; }

    void setSync(bool on) {
        preferences_->set(preference_keys::cloudSync, on);
        rules_.on = on;
        if (on) {
            store().pushToCloud();
            rules_.own = rules_.memory;
        }
    }

    void holdBack() { running_->cloud.holdBack(true); }

    /// Brings back an earlier list; false if there is none.
    void restore(std::size_t which) {
        bool done = false;
        store().restoreEarlier(which, [&](const Outcome& outcome) {
            EXPECT_TRUE(outcome) << (outcome ? "" : outcome.error().message);
            done = true;
        });
        drain();
        running_->executor.run();
        EXPECT_TRUE(done);
        const std::string bytes = rules_.earlier[which - 1];
        if (rules_.memory.bytes != "[]")
            rules_.keepEarlier(rules_.memory.bytes);
        rules_.change(bytes, clock_.now().unixSeconds());
        // Where its stamp is not the highest, it may have been replaced already.
        if (store().lastLocalStamp().get() != rules_.memory.stamp)
            rules_.settle();
    }

    /// Does all that is to be done, and looks whether that was right.
    std::size_t settle() {
        // One thing leads to another: what is found at the end of a round is sent in the next.
        auto before = state();
        for (int quietRounds = 0; quietRounds < 2; ++quietRounds) {
            drain();
            running_->cloud.synchronize();
            EXPECT_TRUE(running_->cloud.await(std::chrono::seconds(60)));
            for (int step = 0; step < 2; ++step) {
                running_->executor.run();
                drain();
            }
            if (auto now = state(); now != std::exchange(before, now))
                quietRounds = -1;
        }
        const std::size_t accepted = rules_.settle();
        check();
        return accepted;
    }

    void write() { preferences_->write(); }

    /// Ends the program without a word. Some of what it wrote last to its preferences is on the disk; what it
    /// was about to do on the main thread is not done. `sent` says whether the folder has got what it gave.
    void kill(std::size_t written, bool sent) {
        drain();
        if (sent) {
            EXPECT_TRUE(running_->cloud.await(std::chrono::seconds(60)));
            rules_.send();
        }
        running_.reset();
        if (!sent)
            support::writeFile(folder() / ("~" + id_.toString() + ".tmp"), "{\"format\":1,\"dev");
        preferences_ = preferences_->afterCrash(std::min(written, preferences_->unwritten()));
        const auto items = preferences_->data(preference_keys::items);
        rules_.memory = {items ? std::string(items->bytes()) : "[]",
                         preferences_->real(preference_keys::itemsStamp).value_or(0)};
        rules_.on = preferences_->boolean(preference_keys::cloudSync).value_or(true);
        rules_.own.reset();
        start();
        EXPECT_EQ(thisId(), id_);
    }
    std::size_t unwritten() {
        drain();
        return preferences_->unwritten();
    }

    void check() {
        EXPECT_EQ(*encodeStoredItems(store().items()), rules_.memory.bytes);
        EXPECT_EQ(store().lastLocalStamp().get(), rules_.memory.stamp) << describe();
        const Backups backups(home_, clock_);
        EXPECT_EQ(backups.listTimes().size(), rules_.earlier.size());
        for (std::size_t which = 1; which <= rules_.earlier.size(); ++which) {
            const auto kept = backups.list(which);
            EXPECT_EQ(kept ? std::string(kept->bytes()) : kept.error().message, rules_.earlier[which - 1]);
        }
        const std::string own = support::bytesOf(fileOf(id_));
        const auto file = rules_.files.find(rules_.self);
        const auto read = decodeDeviceFile(own);
        if (file == rules_.files.end() || !file->second) {
            EXPECT_FALSE(std::holds_alternative<DeviceFile>(read));
        } else {
            ASSERT_TRUE(std::holds_alternative<DeviceFile>(read)) << own;
            const auto& [device, list] = std::get<DeviceFile>(read);
            EXPECT_EQ(device.id, id_);
            EXPECT_EQ((Version{std::string(list.items.bytes()), list.stamp}), *file->second);
        }
    }

    /// In figures, for whoever looks into a failure.
    std::string describe() const {
        std::ostringstream text;
        text.precision(16);
        const auto show = [&](const char* what, const std::optional<Version>& version) {
            text << what << ' ' << (version ? version->stamp : -1) << '\n';
        };
        text << "store " << running_->store.lastLocalStamp().get() << " on " << rules_.on << '\n';
        show("memory", rules_.memory);
        show("own", rules_.own);
        for (const auto& [device, file] : rules_.files)
            show(device == rules_.self ? "own file" : "file", file);
        show("cloud store",
             running_->cloud.real(preference_keys::itemsStamp)
                 ? std::optional(Version{"", *running_->cloud.real(preference_keys::itemsStamp)})
                 : std::nullopt);
        for (const FoundDevice& found : running_->cloud.status().devices)
            text << "found " << found.device.id.toString() << ' ' << found.stamp << '\n';
        return text.str();
    }

private:
    /// What ends with the program.
    struct Running {
        Running(const fs::path& home, LaggingPreferences& preferences, const Clock& clock, Backups& backups)
            : cloud(home, executor, clock,
                    makeCarrier(chosenSyncPlace(preferences), PlaceIs::SetUp, preferences)),
              store({preferences, cloud, reminders, clock, notifications, executor, &backups}),
              commands({preferences, cloud, store, clock, executor, nullptr}) {}

        ManualExecutor executor;
        support::RecordingReminderCenter reminders;
        NotificationCenter notifications;
        SyncedCloudStore cloud;
        TodoStore store;
        SyncCommands commands;
    };

    void start() { running_ = std::make_unique<Running>(home_, *preferences_, clock_, backups_); }
    void drain() { EXPECT_TRUE(store().drain()); }
    Uuid thisId() { return thisDevice(*preferences_).id; }
    std::pair<double, std::string> state() {
        return {store().lastLocalStamp().get(), support::bytesOf(fileOf(id_))};
    }

    const fs::path home_;
    const fs::path root_;
    support::FixedClock clock_;
    Backups backups_{home_, clock_};
    std::unique_ptr<LaggingPreferences> preferences_ = std::make_unique<LaggingPreferences>();
    Rules rules_;
    Uuid id_;
    std::unique_ptr<Running> running_;
};

struct Tally {
    std::size_t accepted = 0;
    std::size_t kills = 0;
    std::size_t late = 0;
    std::size_t restored = 0;
};

class FolderHistory {
public:
    explicit FolderHistory(std::uint64_t seed) : random_(seed) {
        const double skews[] = {0, 90.125, -3600.375};
        for (std::size_t number = 0; number < computers_.size(); ++number) {
            computers_[number] = std::make_unique<Computer>(place_.path() / std::to_string(number), number);
            skews_[number] = skews[number];
        }
    }

    void play(std::size_t steps) {
        for (std::size_t step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
            story_ << '\n' << step << ": ";
            doSomething();
            if (oneIn(200))
                deliverEverything();
        }
        if (!testing::Test::HasFailure())
            finish();
    }

    std::string story() const {
        const std::string all = story_.str();
        return all.substr(all.size() - std::min<std::size_t>(all.size(), 4000));
    }
    const Tally& tally() const { return tally_; }

private:
    /// A file on its way from one computer's copy of the folder to another's.
    struct Parcel {
        std::size_t from;
        std::size_t to;
        std::optional<Version> version;
        std::string bytes;
    };

    std::size_t below(std::size_t count) { return static_cast<std::size_t>(random_() % count); }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    std::size_t someone() {
        const std::size_t number = below(computers_.size());
        story_ << "computer " << number << ' ';
        return number;
    }

    /// Clocks never show the same moment twice, whatever they are set to.
    void passTime(std::size_t number) {
        double shown = 0;
        do {
            time_ += 0.0625 * static_cast<double>(1 + below(1000));
            shown = time_ + skews_[number];
        } while (!moments_.insert(shown).second);
        computers_[number]->clock().set(Instant::fromUnixSeconds(shown));
    }

    void doSomething() {
        const std::size_t kind = below(20);
        if (kind < 7) {
            const std::size_t number = someone();
            change(*computers_[number], number);
            if (oneIn(3))
                kill(*computers_[number]);
            else if (!oneIn(4))
                settle(number);
        } else if (kind < 10) {
            pick();
        } else if (kind < 14) {
            deliver();
        } else if (kind < 15) {
            const std::size_t number = someone();
            story_ << "settles";
            settle(number);
        } else if (kind < 16) {
            kill(*computers_[someone()]);
        } else if (kind < 17) {
            const std::size_t number = someone();
            story_ << "sets its clock";
            skews_[number] = 0.03125 * static_cast<double>(below(200'000)) - 3000;
        } else if (kind < 18) {
            const std::size_t number = someone();
            const bool on = !oneIn(3);
            story_ << "switches sync " << (on ? "on" : "off");
            settle(number);
            computers_[number]->setSync(on);
            settle(number);
        } else {
            putSomethingForeign(*computers_[someone()]);
        }
    }

    void change(Computer& computer, std::size_t number) {
        settle(number); // Of what may arrive in the midst of a change, tests of the store know more.
        passTime(number);
        Rules& rules = computer.rules();
        Items items = *decodeStoredItems(rules.memory.bytes);
        TodoStore& store = computer.store();
        const double stamp = computer.clock().now().unixSeconds();
        const std::size_t kind = items.empty() || oneIn(3) ? 0 : below(6);
        const std::size_t index = items.empty() ? 0 : below(items.size());
        story_ << "change " << kind << ' ';
        if (kind == 0) {
            ++tasks_;
            const TodoItem item =
                support::Task("task " + std::to_string(tasks_)).id(support::numberedId(tasks_));
            items.insert(items.begin(), item);
            store.add(item);
        } else if (kind == 1) {
            TodoItem& item = items[index];
            item.isDone = !item.isDone;
            item.completedAt = item.isDone ? std::optional(computer.clock().now()) : std::nullopt;
            store.toggle(item.id);
        } else if (kind == 2) {
            items[index].title += "'";
            store.update(items[index]);
        } else if (kind == 3) {
            rules.keepEarlier(rules.memory.bytes);
            store.remove(items[index].id);
            items.erase(items.begin() + static_cast<std::ptrdiff_t>(index));
        } else if (kind == 4) {
            if (std::erase_if(items, [](const TodoItem& item) { return item.isDone; }) > 0)
                rules.keepEarlier(rules.memory.bytes);
            store.clearCompleted();
        } else {
            if (rules.earlier.empty())
                return;
            ++tally_.restored;
            computer.restore(1 + below(rules.earlier.size()));
            return;
        }
        rules.change(*encodeStoredItems(items), stamp);
    }

    void settle(std::size_t number) {
        tally_.accepted += computers_[number]->settle();
        if (oneIn(2))
            computers_[number]->write();
    }

    void kill(Computer& computer) {
        ++tally_.kills;
        const bool sent = oneIn(2);
        story_ << "killed, " << (sent ? "sent" : "not sent") << ' ';
        if (!sent) {
            computer.settle();
            computer.holdBack();
            const std::size_t number = computer.rules().self;
            passTime(number);
            Rules& rules = computer.rules();
            Items items = *decodeStoredItems(rules.memory.bytes);
            ++tasks_;
            const TodoItem item =
                support::Task("lost " + std::to_string(tasks_)).id(support::numberedId(tasks_));
            computer.store().add(item);
        }
        computer.kill(below(computer.unwritten() + 2), sent);
        computer.settle();
    }

    /// The tool sees a file.
    void pick() {
        const std::size_t from = someone();
        Computer& computer = *computers_[from];
        settle(from);
        const auto file = computer.rules().files.find(from);
        if (file == computer.rules().files.end() || !file->second)
            return;
        story_ << "has its file fetched";
        for (std::size_t to = 0; to < computers_.size(); ++to) {
            if (to != from)
                underway_.push_back(
                    {from, to, *file->second, support::bytesOf(computer.fileOf(computer.id()))});
        }
    }

    /// Something that is under way arrives: the oldest or any other, once or twice, whole or by halves.
    void deliver() {
        if (underway_.empty())
            return;
        const std::size_t which = oneIn(2) ? 0 : below(underway_.size());
        tally_.late += which > 0 ? 1 : 0;
        const auto parcel = underway_.begin() + static_cast<std::ptrdiff_t>(which);
        Parcel arriving = *parcel;
        if (!oneIn(8))
            underway_.erase(parcel);
        story_ << "computer " << arriving.to << " gets the file of " << arriving.from;
        if (oneIn(6)) {
            arriving.bytes.resize(arriving.bytes.size() / 2);
            arriving.version.reset();
            story_ << " by half";
        }
        put(arriving);
        if (!oneIn(4))
            settle(arriving.to);
    }

    void put(const Parcel& parcel) {
        Computer& to = *computers_[parcel.to];
        const fs::path file = to.fileOf(computers_[parcel.from]->id());
        if (oneIn(2)) { // As most tools do.
            const fs::path temporary = to.folder() / (".syncthing." + file.filename().string() + ".tmp");
            support::writeFile(temporary, parcel.bytes);
            fs::rename(temporary, file);
        } else {
            support::writeFile(file, parcel.bytes);
        }
        to.rules().files[parcel.from] = parcel.version;
    }

    void putSomethingForeign(Computer& computer) {
        const Computer& from = *computers_[below(computers_.size())];
        const std::string id = from.id().toString();
        const std::string later = encodeDeviceFile({{from.id(), "", ""}, {Data("[]"), time_ + 1e9}}).value();
        const std::string names[] = {id + ".sync-conflict-20250304-094100-ABCDEFG.json",
                                     id + " (conflicted copy 2025-03-04 094100).json", id + ".json~",
                                     "~" + id + ".json.tmp", "notes.json"};
        const std::size_t kind = below(8);
        story_ << "gets something foreign " << kind;
        if (kind < 5) {
            support::writeFile(computer.folder() / names[kind], later);
        } else if (kind == 5) { // Another program's, or a newer one's.
            const Uuid stranger = support::numberedId(4'000'000'000);
            support::writeFile(computer.fileOf(stranger), oneIn(2) ? later : R"({"format":2,"stamp":9e9})");
        } else if (kind == 6) { // Its own file is damaged, or gone.
            computer.settle();
            computer.rules().files[computer.rules().self].reset();
            if (oneIn(2))
                support::writeFile(computer.fileOf(computer.id()), "{\"format\":1,");
            else
                fs::remove(computer.fileOf(computer.id()));
            computer.settle();
        } else {
            const Uuid stranger = support::numberedId(4'000'000'001);
            support::writeFile(
                computer.fileOf(stranger),
                encodeDeviceFile({{stranger, "", ""}, {Data("[{\"title\":7}]"), time_ + 1e9}}).value());
        }
    }

    void deliverEverything() {
        underway_.clear();
        for (int round = 0; round < 3; ++round) {
            for (std::size_t number = 0; number < computers_.size(); ++number)
                settle(number);
            for (std::size_t from = 0; from < computers_.size(); ++from) {
                Computer& computer = *computers_[from];
                const auto file = computer.rules().files.find(from);
                for (std::size_t to = 0; to < computers_.size(); ++to) {
                    if (to != from && file != computer.rules().files.end() && file->second)
                        put({from, to, file->second, support::bytesOf(computer.fileOf(computer.id()))});
                }
            }
        }
        for (std::size_t number = 0; number < computers_.size(); ++number)
            settle(number);
    }

    void finish() {
        story_ << "\nthe end";
        for (std::size_t number = 0; number < computers_.size(); ++number) {
            settle(number);
            computers_[number]->setSync(true);
            settle(number);
        }
        Version highest;
        for (const auto& computer : computers_) {
            if (highest.stamp < computer->rules().memory.stamp)
                highest = computer->rules().memory;
        }
        EXPECT_GT(highest.stamp, 0);
        deliverEverything();
        for (const auto& computer : computers_) {
            EXPECT_EQ(computer->store().lastLocalStamp().get(), highest.stamp);
            EXPECT_EQ(*encodeStoredItems(computer->store().items()), highest.bytes);
        }
        // What was replaced comes back, on a computer that goes on with it, and on all.
        for (std::size_t which = computers_.front()->rules().earlier.size(); which > 0; --which) {
            Computer& computer = *computers_.front();
            const std::string wanted = computer.rules().earlier[which - 1];
            skews_[0] = 1e6; // Later than all others' moments.
            passTime(0);
            computer.restore(which);
            deliverEverything();
            for (const auto& each : computers_)
                EXPECT_EQ(*encodeStoredItems(each->store().items()), wanted);
            if (testing::Test::HasFailure())
                return;
        }
    }

    std::mt19937_64 random_;
    support::TemporaryFolder place_;
    std::array<std::unique_ptr<Computer>, 3> computers_;
    std::array<double, 3> skews_{};
    double time_ = 1'741'081'260;
    std::set<double> moments_;
    std::uint32_t tasks_ = 0;
    std::deque<Parcel> underway_;
    std::ostringstream story_;
    Tally tally_;
};

std::uint64_t numberIn(const char* variable, std::uint64_t otherwise) {
    const char* text = std::getenv(variable);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

TEST(FolderSyncHistory, EndsInTheListWithTheHighestStampAndLosesNone) {
    const support::CapturedLog log;
    const std::uint64_t seed = numberIn("QUILLO_SYNC_SEED", std::random_device{}());
    const std::uint64_t steps = numberIn("QUILLO_SYNC_STEPS", 1500);
    FolderHistory history(seed);
    history.play(steps);
    EXPECT_FALSE(HasFailure()) << "repeat with QUILLO_SYNC_SEED=" << seed << history.story();
    const Tally& tally = history.tally();
    std::cout << steps << " steps, " << tally.accepted << " lists taken over, " << tally.kills << " kills, "
              << tally.late << " files out of order, " << tally.restored << " lists restored\n";
    if (steps >= 1000 && !HasFailure()) {
        EXPECT_GT(tally.accepted, 50U);
        EXPECT_GT(tally.kills, 50U);
        EXPECT_GT(tally.late, 20U);
        EXPECT_GT(tally.restored, 5U);
    }
}

} // namespace
} // namespace quillo
