#include "sync/LookTimes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace quillo {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(LookTimes, DependOnWhetherTheListIsShown) {
    LookTimes times;
    times.hasSucceeded(100s);
    EXPECT_EQ(times.next(true), 130s);
    EXPECT_EQ(times.next(false), 100s + 15min);
}

TEST(LookTimes, AreFurtherApartWhileThePlaceFails) {
    LookTimes times;
    std::vector<std::chrono::seconds> waits;
    for (int failure = 0; failure < 8; ++failure) {
        times.hasFailed(1000s, 0s);
        waits.push_back(std::chrono::duration_cast<std::chrono::seconds>(times.next(true) - 1000s));
        EXPECT_EQ(times.next(false), times.next(true));
        EXPECT_EQ(times.notBefore(), 1000s);
    }
    EXPECT_THAT(waits, ElementsAre(30s, 60s, 120s, 240s, 480s, 900s, 900s, 900s));
    times.hasSucceeded(2000s);
    EXPECT_EQ(times.next(true), 2030s);
}

TEST(LookTimes, LeaveAPlaceAloneAsItWants) {
    LookTimes times;
    times.hasFailed(1000s, 120s);
    EXPECT_EQ(times.notBefore(), 1120s);
    EXPECT_EQ(times.next(true), 1120s);
    times.hasFailed(1200s, 1'000'000s);
    EXPECT_EQ(times.notBefore(), 1200s + 1h);
    times.hasSucceeded(9000s);
    EXPECT_EQ(times.notBefore(), 9000s);
}

} // namespace
} // namespace quillo
