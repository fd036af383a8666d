// One task ticked off or taken back in the resident list while the popover's rows follow it: what it costs
// the main thread, the median and the 99th of all changes.
#include "base/ManualExecutor.h"
#include "base/NotificationCenter.h"
#include "model/TodoItemJson.h"
#include "store/TodoStore.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"
#include "ui/popover/TaskListModel.h"
#include "unicode/CivilCalendar.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace quillo;
using Stopwatch = std::chrono::steady_clock;

constexpr int changes = 2000;

std::vector<TodoItem> makeItems(std::size_t count) {
    std::vector<TodoItem> items(count);
    for (std::size_t place = 0; place < count; ++place) {
        items[place].id = Uuid::random();
        items[place].title = "Task number " + std::to_string(place) + ", as long as titles usually are";
        items[place].createdAt = {7.6e8 + static_cast<double>(place) / 3};
        items[place].dueDate = {8e8 + static_cast<double>(place) * 60};
    }
    return items;
}

void toggle(benchmark::State& state) {
    // The model has a timer, and Qt has timers only where there is an application.
    int count = 0;
    const QCoreApplication application(count, nullptr);

    const std::vector<TodoItem> items = makeItems(static_cast<std::size_t>(state.range(0)));
    support::InMemoryPreferences preferences;
    preferences.apply({{std::string(preference_keys::items), Data(*encodeStoredItems(items))}});
    support::InMemoryCloudStore cloud;
    support::RecordingReminderCenter reminders;
    support::FixedClock clock;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    TodoStore store({preferences, cloud, reminders, clock, notifications, mainExecutor});
    const unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    TaskListModel model(store, clock, calendar);
    model.setShowCompleted(true); // Rows move, which is dearer than that they go.
    model.setActive(true);

    std::mt19937_64 random(1);
    std::vector<double> microseconds;
    for (auto _ : state) {
        const Uuid& task = items[random() % items.size()].id;
        const auto start = Stopwatch::now();
        store.toggle(task);
        const std::chrono::duration<double> taken = Stopwatch::now() - start;
        state.SetIterationTime(taken.count());
        microseconds.push_back(taken.count() * 1e6);
    }
    std::sort(microseconds.begin(), microseconds.end());
    state.counters["median_us"] = microseconds[microseconds.size() / 2];
    state.counters["p99_us"] = microseconds[microseconds.size() * 99 / 100];
    benchmark::DoNotOptimize(store.drain());
}

BENCHMARK(toggle)
    ->Name("task list model/toggle")
    ->Arg(100)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime()
    ->Iterations(changes);

} // namespace
