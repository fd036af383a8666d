// Reading and writing the stored form of the list, each beside the bare library doing the same work: one
// On-Demand pass that reads every field, one streaming write of the same keys and values.
#include "model/TodoItemJson.h"

#include <benchmark/benchmark.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <random>
#include <string>
#include <vector>

namespace {

using quillo::Instant;
using quillo::TodoItem;
using quillo::Uuid;

/// Tasks as people have them: half with a date, a third done, due ones with a reminder.
std::vector<TodoItem> makeItems(std::size_t count) {
    std::mt19937_64 random(1);
    std::vector<TodoItem> items(count);
    for (std::size_t i = 0; i < count; ++i) {
        TodoItem& item = items[i];
        for (auto& byte : item.id.bytes)
            byte = static_cast<std::uint8_t>(random());
        item.title = "Task number " + std::to_string(i) + ", as long as titles usually are";
        item.createdAt = {7.6e8 + static_cast<double>(random() % 1'000'000'000) / 1024};
        if (i % 2 == 0) {
            item.dueDate = item.createdAt + 3600.0 * static_cast<double>(random() % 1000);
            item.notificationID = "quillo." + item.id.toString();
        }
        if (i % 3 == 0) {
            item.isDone = true;
            item.completedAt = item.createdAt + static_cast<double>(random() % 1'000'000) / 7;
        }
    }
    return items;
}

/// A task's fields as the bare passes carry them.
struct Fields {
    std::string id;
    const TodoItem* item;
};

void bareRead(benchmark::State& state) {
    const std::string bytes = *quillo::encodeStoredItems(makeItems(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        const simdjson::padded_string padded(
            bytes); // simdjson wants room behind the text; stored bytes have none.
        simdjson::ondemand::parser parser;
        simdjson::ondemand::document document;
        simdjson::ondemand::array array;
        double sum = 0;
        std::size_t length = 0;
        bool failed = parser.iterate(padded).get(document) || document.get_array().get(array);
        for (auto element : array) {
            simdjson::ondemand::object object;
            failed |= element.get_object().get(object) != simdjson::SUCCESS;
            for (auto field : object) {
                const auto key = field.key().value_unsafe();
                if (key == "id" || key == "title" || key == "notificationID") {
                    std::string_view text;
                    failed |= field.value().get_string().get(text) != simdjson::SUCCESS;
                    length += text.size();
                } else if (key == "isDone") {
                    bool done = false;
                    failed |= field.value().get_bool().get(done) != simdjson::SUCCESS;
                    length += done;
                } else {
                    double number = 0;
                    failed |= field.value().get_double().get(number) != simdjson::SUCCESS;
                    sum += number;
                }
            }
        }
        if (failed)
            state.SkipWithError("the bare pass could not read the list");
        benchmark::DoNotOptimize(sum);
        benchmark::DoNotOptimize(length);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) *
                            static_cast<std::int64_t>(state.iterations()));
}

void decode(benchmark::State& state) {
    const std::string bytes = *quillo::encodeStoredItems(makeItems(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        auto items = quillo::decodeStoredItems(bytes);
        if (!items || items->size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("the list could not be read");
        state.PauseTiming(); // Letting the tasks go is not reading them.
        items.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) *
                            static_cast<std::int64_t>(state.iterations()));
}

void bareWrite(benchmark::State& state) {
    const auto items = makeItems(static_cast<std::size_t>(state.range(0)));
    std::vector<Fields> fields;
    for (const TodoItem& item : items)
        fields.push_back({item.id.toString(), &item});
    std::size_t size = 0;
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        const auto text = [&writer](const std::string& value) {
            writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
        };
        writer.StartArray();
        for (const auto& [id, item] : fields) {
            writer.StartObject();
            writer.Key("id", 2);
            text(id);
            writer.Key("title", 5);
            text(item->title);
            writer.Key("isDone", 6);
            writer.Bool(item->isDone);
            if (item->dueDate) {
                writer.Key("dueDate", 7);
                writer.Double(item->dueDate->secondsSince2001);
            }
            writer.Key("createdAt", 9);
            writer.Double(item->createdAt.secondsSince2001);
            if (item->completedAt) {
                writer.Key("completedAt", 11);
                writer.Double(item->completedAt->secondsSince2001);
            }
            if (item->notificationID) {
                writer.Key("notificationID", 14);
                text(*item->notificationID);
            }
            writer.EndObject();
        }
        writer.EndArray();
        size = buffer.GetSize();
        benchmark::DoNotOptimize(buffer.GetString());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * static_cast<std::int64_t>(state.iterations()));
}

void encode(benchmark::State& state) {
    const auto items = makeItems(static_cast<std::size_t>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state) {
        const auto bytes = quillo::encodeStoredItems(items);
        if (!bytes)
            state.SkipWithError("the list could not be written");
        else
            size = bytes->size();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * static_cast<std::int64_t>(state.iterations()));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(bareRead)->Name("stored items/read/bare simdjson")->Apply(sizes);
BENCHMARK(decode)->Name("stored items/read/Quillo")->Apply(sizes);
BENCHMARK(bareWrite)->Name("stored items/write/bare RapidJSON")->Apply(sizes);
BENCHMARK(encode)->Name("stored items/write/Quillo")->Apply(sizes);

} // namespace
