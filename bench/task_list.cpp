/// Opening a stored list, and writing it back after one task was added: what one command does with a list of
/// any length.
#include "model/TodoItemJson.h"
#include "store/TaskList.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

Data storedList(std::int64_t count) {
    std::vector<TodoItem> items(static_cast<std::size_t>(count));
    for (TodoItem& item : items) {
        const auto number = static_cast<double>(&item - items.data());
        item.id = Uuid::random();
        item.title =
            "Task number " + std::to_string(&item - items.data()) + ", as long as titles usually are";
        item.createdAt = {7.6e8 + number / 3};
        if (static_cast<int>(number) % 2 == 0)
            item.dueDate = item.createdAt + 3600;
    }
    return Data(*encodeStoredItems(items));
}

void open(benchmark::State& state) {
    const Data stored = storedList(state.range(0));
    for (auto _ : state) {
        auto list = TaskList::decode(stored);
        if (!list || list->size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("the list could not be read");
        benchmark::DoNotOptimize(list);
    }
}

void openAddAndWrite(benchmark::State& state) {
    const Data stored = storedList(state.range(0));
    TodoItem item;
    item.id = Uuid::random();
    item.title = "Buy milk";
    for (auto _ : state) {
        auto list = TaskList::decode(stored);
        list->pushFront(item);
        const auto bytes = list->encode();
        if (!bytes || bytes->size() <= stored.bytes().size())
            state.SkipWithError("the list could not be written");
        benchmark::DoNotOptimize(bytes);
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(open)->Name("task list/open")->Apply(sizes);
BENCHMARK(openAddAndWrite)->Name("task list/open, add, write")->Apply(sizes);

} // namespace
} // namespace quillo
