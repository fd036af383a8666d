#include "ui/mascot/TapCounter.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillo {
namespace {

using namespace std::chrono_literals;

/// Which of the taps at these times give the secret away, counted from 1.
std::vector<int> secretsAmong(const std::vector<std::chrono::milliseconds>& times) {
    TapCounter counter;
    std::vector<int> secrets;
    for (std::size_t i = 0; i < times.size(); ++i)
        if (counter.tap(TapCounter::Instant(times[i])))
            secrets.push_back(static_cast<int>(i) + 1);
    return secrets;
}

using Secrets = std::vector<int>;

TEST(TapCounterTest, FiveQuickTapsGiveTheSecretAwayOnce) {
    EXPECT_EQ(secretsAmong({0ms, 500ms, 1000ms, 1500ms}), Secrets{});
    EXPECT_EQ(secretsAmong({0ms, 500ms, 1000ms, 1500ms, 2000ms}), Secrets{5});
    EXPECT_EQ(secretsAmong({7ms, 7ms, 7ms, 7ms, 7ms}), Secrets{5});
}

TEST(TapCounterTest, TapsSpreadOverFourSecondsDoNot) {
    EXPECT_EQ(secretsAmong({0ms, 1000ms, 2000ms, 3000ms, 4000ms}), Secrets{});
    EXPECT_EQ(secretsAmong({0ms, 1000ms, 2000ms, 3000ms, 4000ms, 5000ms, 6000ms, 7000ms, 8000ms}), Secrets{});
}

TEST(TapCounterTest, ATapOfThreeSecondsAgoIsForgotten) {
    EXPECT_EQ(secretsAmong({0ms, 1000ms, 2000ms, 2500ms, 2999ms}), Secrets{5});
    EXPECT_EQ(secretsAmong({0ms, 1000ms, 2000ms, 2500ms, 3000ms}), Secrets{});
    EXPECT_EQ(secretsAmong({0ms, 1000ms, 2000ms, 2500ms, 3000ms, 3100ms}), Secrets{6});
}

TEST(TapCounterTest, NoTapCountsTwice) {
    EXPECT_EQ(secretsAmong({0ms, 10ms, 20ms, 30ms, 40ms, 50ms, 60ms, 70ms, 80ms}), Secrets{5});
    EXPECT_EQ(secretsAmong({0ms, 10ms, 20ms, 30ms, 40ms, 50ms, 60ms, 70ms, 80ms, 90ms}), (Secrets{5, 10}));
}

} // namespace
} // namespace quillo
