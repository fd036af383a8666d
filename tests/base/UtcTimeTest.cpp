#include "base/UtcTime.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillo {
namespace {

using std::chrono::milliseconds;

std::string isoTimeOf(double secondsSince2001) {
    return isoTime(floorToSecond({secondsSince2001}));
}

TEST(UtcTime, StartsAtItsEpoch) {
    EXPECT_EQ(isoTimeOf(0), "2001-01-01T00:00:00Z");
}

TEST(UtcTime, FloorsToTheSecond) {
    EXPECT_EQ(isoTimeOf(0.999), "2001-01-01T00:00:00Z");
    EXPECT_EQ(isoTimeOf(-0.001), "2000-12-31T23:59:59Z");
}

TEST(UtcTime, KnowsLeapDays) {
    EXPECT_EQ(isoTime(floorToSecond(Instant::fromUnixSeconds(1709210096))), "2024-02-29T12:34:56Z");
}

TEST(UtcTime, MovesWhatFourDigitsCannotSayToTheNearestThatTheyCan) {
    EXPECT_EQ(isoTimeOf(1e300), "9999-12-31T23:59:59Z");
    EXPECT_EQ(isoTimeOf(std::numeric_limits<double>::infinity()), "9999-12-31T23:59:59Z");
    EXPECT_EQ(isoTimeOf(-1e300), "0000-01-01T00:00:00Z");
    EXPECT_EQ(isoTimeOf(std::nan("")), "0000-01-01T00:00:00Z");
    EXPECT_EQ(floorToMillisecond({std::nan("")}), UtcMilliseconds(floorToSecond({-1e300})));
}

TEST(UtcTime, FileNamesHaveMilliseconds) {
    EXPECT_EQ(fileNameTime(floorToMillisecond(Instant::fromUnixSeconds(1741081260.25))),
              "20250304T094100.250Z");
    EXPECT_EQ(fileNameTime(floorToMillisecond({-0.25})), "20001231T235959.750Z");
}

TEST(UtcTime, FileNameTimesSortByTime) {
    const UtcMilliseconds time = floorToMillisecond({0});
    EXPECT_LT(fileNameTime(time - milliseconds(1)), fileNameTime(time));
    EXPECT_LT(fileNameTime(time), fileNameTime(time + milliseconds(1)));
}

TEST(UtcTime, ReadsBackTheFileNameTimesItWrites) {
    for (const double seconds : {0.0, 0.5, -62'000'000'000.125, 250'000'000'000.75}) {
        const UtcMilliseconds time = floorToMillisecond({seconds});
        EXPECT_EQ(parseFileNameTime(fileNameTime(time)), time) << seconds;
    }
}

TEST(UtcTime, ReadsNothingElse) {
    for (const std::string_view text :
         {"", "20250304T094100.250", "20250304T094100.250Z ", " 0250304T094100.250Z", "20250304T094100.25Z",
          "20250304t094100.250Z", "20250230T094100.250Z", "20251304T094100.250Z", "20250304T244100.250Z",
          "20250304T096000.250Z", "20250304T094160.250Z", "2025-3-4T094100.250Z", "notes",
          "+0250304T094100.250Z"})
        EXPECT_EQ(parseFileNameTime(text), std::nullopt) << text;
}

} // namespace
} // namespace quillo
