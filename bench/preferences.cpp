// The preferences file beside plain SQLite: saving a list of 100, 10,000 and 100,000 tasks (some 180 bytes
// each) with its time stamp until both are on disk, and opening the file. The plain program uses the same
// settings and statements.
#include "sqlite/SqlitePreferences.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace {

using quillo::Data;
using quillo::SqlitePreferences;
using quillo::Value;

/// A folder on the disk that the build is on, since a memory file system would make every save look free.
class Folder {
public:
    Folder() {
        std::string pattern = (std::filesystem::current_path() / "quillo-bench-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Bytes of the stored list: as many as `tasks` tasks have, a few more or less every round.
std::size_t lengthOf(std::int64_t tasks, std::size_t round) {
    return static_cast<std::size_t>(tasks) * 180 + round % 7;
}

std::string listOf(std::int64_t tasks, std::size_t round) {
    return std::string(lengthOf(tasks, round), 'x');
}

std::unique_ptr<SqlitePreferences> open(const Folder& folder, SqlitePreferences::Access access) {
    auto preferences = SqlitePreferences::open(folder.path(), access);
    if (!preferences)
        std::abort();
    return std::move(*preferences);
}

void save(SqlitePreferences& preferences, std::string list, double stamp) {
    preferences.apply(
        {{"Quillo.items.v1", Value(Data(std::move(list)))}, {"Quillo.items.v1.stamp", Value(stamp)}});
    if (!preferences.flush())
        std::abort();
}

void run(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        std::abort();
}

void put(sqlite3_stmt* remove, sqlite3_stmt* insert, const char* key, const char* type, auto bindValue) {
    sqlite3_bind_text(remove, 1, key, -1, SQLITE_STATIC);
    sqlite3_bind_text(insert, 1, key, -1, SQLITE_STATIC);
    sqlite3_bind_text(insert, 2, type, -1, SQLITE_STATIC);
    bindValue();
    if (sqlite3_step(remove) != SQLITE_DONE || sqlite3_step(insert) != SQLITE_DONE)
        std::abort();
    sqlite3_reset(remove);
    sqlite3_reset(insert);
}

void savePreferences(benchmark::State& state) {
    const Folder folder;
    const auto preferences = open(folder, SqlitePreferences::Access::ReadWrite);
    std::size_t round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::string list = listOf(state.range(0), ++round);
        state.ResumeTiming();
        save(*preferences, std::move(list), static_cast<double>(round));
    }
}

void savePlainly(benchmark::State& state) {
    const Folder folder;
    sqlite3* database = nullptr;
    if (sqlite3_open((folder.path() / "plain.sqlite").c_str(), &database) != SQLITE_OK)
        std::abort();
    run(database,
        "PRAGMA page_size=32768; PRAGMA cache_size=-256; PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;"
        "PRAGMA secure_delete=FAST; PRAGMA wal_autocheckpoint=512; PRAGMA journal_size_limit=33554432;"
        "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value)");
    sqlite3_stmt* remove = nullptr;
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(database, "DELETE FROM preferences WHERE key = ?1", -1, &remove, nullptr);
    sqlite3_prepare_v2(database, "INSERT INTO preferences VALUES(?1, ?2, ?3)", -1, &insert, nullptr);
    std::size_t round = 0;
    std::string list = listOf(state.range(0), 6); // Kept, so that freeing it is not in the measurement.
    for (auto _ : state) {
        list.resize(lengthOf(state.range(0), ++round));
        run(database, "BEGIN IMMEDIATE");
        put(remove, insert, "Quillo.items.v1", "data",
            [&] { sqlite3_bind_blob64(insert, 3, list.data(), list.size(), SQLITE_STATIC); });
        put(remove, insert, "Quillo.items.v1.stamp", "double",
            [&] { sqlite3_bind_double(insert, 3, static_cast<double>(round)); });
        run(database, "COMMIT");
    }
    sqlite3_finalize(remove);
    sqlite3_finalize(insert);
    sqlite3_close(database);
}

void openPreferences(benchmark::State& state, SqlitePreferences::Access access) {
    const Folder folder;
    save(*open(folder, SqlitePreferences::Access::ReadWrite), listOf(state.range(0), 0), 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(open(folder, access));
}

void openAndReadList(benchmark::State& state) {
    const Folder folder;
    save(*open(folder, SqlitePreferences::Access::ReadWrite), listOf(state.range(0), 0), 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(open(folder, SqlitePreferences::Access::ReadOnly)->data("Quillo.items.v1"));
}

/// What one command that changes the list does: open, read, write, close.
void openReadAndSave(benchmark::State& state) {
    const Folder folder;
    save(*open(folder, SqlitePreferences::Access::ReadWrite), listOf(state.range(0), 0), 1);
    std::size_t round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::string list = listOf(state.range(0), ++round);
        state.ResumeTiming();
        const auto preferences = open(folder, SqlitePreferences::Access::ReadWrite);
        benchmark::DoNotOptimize(preferences->data("Quillo.items.v1"));
        save(*preferences, std::move(list), static_cast<double>(round));
    }
}

/// The work is done on another thread: the processor time of the whole process is what counts.
void atAllSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(10'000)->Arg(100'000)->ArgName("tasks");
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
}

BENCHMARK(savePreferences)->Apply(atAllSizes);
BENCHMARK(savePlainly)->Apply(atAllSizes);
BENCHMARK_CAPTURE(openPreferences, forWriting, SqlitePreferences::Access::ReadWrite)->Apply(atAllSizes);
BENCHMARK_CAPTURE(openPreferences, forReading, SqlitePreferences::Access::ReadOnly)->Apply(atAllSizes);
BENCHMARK(openAndReadList)->Apply(atAllSizes);
BENCHMARK(openReadAndSave)->Apply(atAllSizes);

} // namespace
