// One change of the resident list: what it costs the main thread (the median and the 99th of all changes,
// while the queue saves in the background as fast as it can), and what one save costs the background.
#include "base/ManualExecutor.h"
#include "entry/Services.h"
#include "model/TodoItemJson.h"
#include "reminders/AlignReminders.h"
#include "reminders/TaskReminder.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace quillo;
using Stopwatch = std::chrono::steady_clock;

constexpr int changes = 2000;

double microsecondsSince(Stopwatch::time_point start) {
    return std::chrono::duration<double, std::micro>(Stopwatch::now() - start).count();
}

/// Has one list to load, and forgets what is written.
class OneList : public Preferences {
public:
    explicit OneList(Data list) : list_(std::move(list)) {}

    std::optional<Value> value(std::string_view key) const override {
        return key == preference_keys::items ? std::optional<Value>(list_) : std::nullopt;
    }
    void apply(std::vector<Change> written) override { benchmark::DoNotOptimize(written); }

private:
    const Data list_;
};

class NoCloud : public CloudStore {
public:
    std::optional<Value> value(std::string_view) const override { return std::nullopt; }
    void apply(std::vector<Change>) override {}
    void synchronize() override {}
};

/// The resident program's services with `count` open tasks, of which every second one was reminded of or will
/// be: the newest 300 are still to come.
class Resident {
public:
    explicit Resident(std::size_t count)
        : items_(makeItems(count)), preferences_(Data(*encodeStoredItems(items_))) {
        alignReminders(services_.reminderBook(), remindedTasks(store().items().itemsWithNotification()),
                       calendar_, clock_.now());
    }

    static std::vector<TodoItem> makeItems(std::size_t count) {
        constexpr std::size_t stillToCome = 300;
        std::vector<TodoItem> items(count);
        for (std::size_t place = 0; place < count; ++place) {
            items[place] = makeItem(place);
            if (place % 2 == 0)
                items[place].notificationID = reminderIdentifier(items[place].id);
            if (place < stillToCome)
                items[place].dueDate = Instant{SystemClock().now().secondsSince2001 + 86400.0 * (1 + place)};
        }
        return items;
    }
    static TodoItem makeItem(std::size_t number) {
        TodoItem item;
        item.id = Uuid::random();
        item.title = "Task number " + std::to_string(number) + ", as long as titles usually are";
        item.createdAt = {7.6e8 + static_cast<double>(number) / 3};
        return item;
    }

    const std::vector<TodoItem>& items() const { return items_; }
    TodoStore& store() { return services_.todoStore(); }

private:
    std::vector<TodoItem> items_;
    OneList preferences_;
    NoCloud cloud_;
    SystemClock clock_;
    unicode::CivilCalendar calendar_ = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    ManualExecutor mainExecutor_;
    Backups backups_{std::filesystem::temp_directory_path(), clock_};
    Services services_{Surroundings{preferences_, cloud_, clock_, calendar_, mainExecutor_, backups_}};
};

/// Makes the change 2,000 times and reports what each took the main thread; then a few times more, waiting
/// for the save.
template <class Change>
void measure(benchmark::State& state, Resident& resident, Change change) {
    std::vector<double> each;
    for (auto _ : state) {
        const auto start = Stopwatch::now();
        change();
        each.push_back(microsecondsSince(start));
        state.SetIterationTime(each.back() / 1e6);
    }
    std::sort(each.begin(), each.end());
    state.counters["median_us"] = each[each.size() / 2];
    state.counters["p99_us"] = each[each.size() * 99 / 100];
    state.counters["max_us"] = each.back();

    constexpr int saves = 5;
    double background = 0;
    for (int save = 0; save < saves; ++save) {
        if (!resident.store().drain())
            state.SkipWithError("the list could not be saved");
        change();
        const auto start = Stopwatch::now();
        benchmark::DoNotOptimize(resident.store().drain());
        background += microsecondsSince(start);
    }
    state.counters["background_us"] = background / saves;
}

void toggle(benchmark::State& state) {
    Resident resident(static_cast<std::size_t>(state.range(0)));
    std::mt19937_64 random(1);
    measure(state, resident,
            [&] { resident.store().toggle(resident.items()[random() % resident.items().size()].id); });
}

void add(benchmark::State& state) {
    Resident resident(static_cast<std::size_t>(state.range(0)));
    const TodoItem item = Resident::makeItem(0);
    measure(state, resident, [&] { resident.store().add(item); });
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)
        ->Arg(10'000)
        ->Arg(100'000)
        ->Unit(benchmark::kMicrosecond)
        ->UseManualTime()
        ->Iterations(changes);
}

BENCHMARK(add)->Name("todo store/add")->Apply(sizes);
BENCHMARK(toggle)->Name("todo store/toggle")->Apply(sizes);

} // namespace
