#include "OpenPreferences.h"
#include "PreferencesFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace quillo::support {

namespace {

TEST(Threads, ApplyAndReadTogether) {
    const PreferencesFolder folder;
    constexpr std::int64_t rounds = 60;
    {
        const auto preferences = openPreferences(folder.path());
        std::atomic<bool> stop = false;
        std::vector<std::thread> threads;
        for (int writer = 0; writer < 3; ++writer) {
            threads.emplace_back([&, own = "own" + std::to_string(writer)] {
                for (std::int64_t round = 1; round <= rounds; ++round) {
                    const auto seed = static_cast<unsigned>(round);
                    preferences->apply({{own, Value(round)},
                                        {own + ".list", Value(Data(largeBytes(seed, 66'000)))},
                                        {"shared", Value(round)},
                                        {"shared.list", Value(Data(largeBytes(seed, 66'000)))}});
                    EXPECT_EQ(preferences->integer(own), round) << "a thread sees its own changes at once";
                    EXPECT_EQ(preferences->data(own + ".list"), Data(largeBytes(seed, 66'000)));
                    if (round % 10 == 0) {
                        EXPECT_EQ(flushError(*preferences), "");
                        EXPECT_EQ(preferences->data(own + ".list"), Data(largeBytes(seed, 66'000)));
                    }
                }
            });
        }
        std::thread reader([&] {
            while (!stop) {
                const auto list = preferences->data("shared.list");
                EXPECT_TRUE(!list || list->bytes().size() == 66'000);
                const auto number = preferences->integer("shared");
                EXPECT_TRUE(!number || (*number >= 1 && *number <= rounds));
            }
        });
        for (std::thread& thread : threads)
            thread.join();
        stop = true;
        reader.join();
    }
    const auto preferences = openPreferences(folder.path());
    for (int writer = 0; writer < 3; ++writer)
        EXPECT_EQ(preferences->integer("own" + std::to_string(writer)), rounds);
    const auto shared = preferences->integer("shared");
    ASSERT_TRUE(shared);
    EXPECT_EQ(preferences->data("shared.list"), Data(largeBytes(static_cast<unsigned>(*shared), 66'000)));
}

} // namespace

} // namespace quillo::support
