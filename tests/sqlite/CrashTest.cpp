#include "ChildProcess.h"
#include "OpenPreferences.h"
#include "PreferencesFolder.h"
#include "RawDatabase.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <optional>
#include <random>
#include <thread>

namespace quillo::support {

namespace {

/// Data of a size that differs with the number: small, large, and around the bound between the two.
std::string listOf(std::int64_t number) {
    const std::array<std::size_t, 5> sizes{40, 3000, preferences_table::largeDataBytes,
                                           preferences_table::largeDataBytes + 1, 400'000};
    return largeBytes(static_cast<unsigned>(number), sizes[static_cast<std::size_t>(number) % sizes.size()]);
}

/// Saves pairs as fast as it can, each number's list and stamp together, and tells which number is on disk
/// for sure.
int savePairs(const std::filesystem::path& folder, int tell) {
    const auto preferences = openPreferences(folder);
    for (std::int64_t number = preferences->integer("number").value_or(0) + 1;; ++number) {
        const Value list = Data(listOf(number));
        preferences->apply({{"list", list}, {"number", number}});
        if (number % 3 != 0)
            continue; // Several changes may become one transaction.
        if (!preferences->flush() || write(tell, &number, sizeof number) != sizeof number)
            return 1;
    }
}

TEST(Crash, LosesNothingThatWasFlushedAndSplitsNoPair) {
    const PreferencesFolder folder;
    std::mt19937 random(20250304);
    std::int64_t flushed = 0;
    for (int round = 0; round < 50; ++round) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        ChildProcess child([&] { return savePairs(folder.path(), pipe[1]); });
        close(pipe[1]);
        std::int64_t number = 0;
        ASSERT_EQ(read(pipe[0], &number, sizeof number), static_cast<ssize_t>(sizeof number));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20'000));
        child.kill();
        do {
            ASSERT_GT(number, flushed) << "the child went on where the last one ended";
            flushed = number;
        } while (read(pipe[0], &number, sizeof number) == sizeof number);
        close(pipe[0]);

        const auto preferences =
            openPreferences(folder.path(), round % 2 == 0 ? Access::ReadOnly : Access::ReadWrite);
        const std::optional<std::int64_t> kept = preferences->integer("number");
        ASSERT_TRUE(kept);
        ASSERT_GE(*kept, flushed) << "round " << round;
        ASSERT_EQ(preferences->data("list"), Data(listOf(*kept))) << "round " << round;
    }
    EXPECT_EQ(RawDatabase(folder.file()).value("PRAGMA integrity_check"), "ok");
    EXPECT_TRUE(folder.damaged().empty());
}

} // namespace

} // namespace quillo::support
