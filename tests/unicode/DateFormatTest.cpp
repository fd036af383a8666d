#include "unicode/DateFormat.h"

#include <gtest/gtest.h>

namespace quillo::unicode {
namespace {

constexpr Instant afternoon = Instant::fromUnixSeconds(1772722800); // 2026-03-05 15:00:00 UTC

TEST(DateFormat, JoinsDateAndTimeAsTheLocaleDoes) {
    const struct {
        const char* locale;
        const char* text;
    } rows[] = {
        {"en_US", "Mar 5, 2026 at 3:00 PM"},
        {"en_GB", "5 Mar 2026 at 15:00"},
        {"de_DE", "05.03.2026 um 15:00"},
        {"fr_FR", "5 mars 2026 à 15:00"},
        {"ar_EG", "٠٥‏/٠٣‏/٢٠٢٦ في ٣:٠٠ م"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DateFormat("UTC", row.locale).dateAndTime(afternoon), row.text) << row.locale;
}

TEST(DateFormat, WritesTheTimeAsTheLocaleDoes) {
    const struct {
        const char* locale;
        const char* text;
    } rows[] = {
        {"en_US", "3:00 PM"}, {"en_GB", "15:00"},  {"de_DE", "15:00"},
        {"fr_FR", "15:00"},   {"ar_EG", "٣:٠٠ م"}, {"ja_JP", "15:00"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DateFormat("UTC", row.locale).shortTime(afternoon), row.text) << row.locale;
    EXPECT_EQ(DateFormat("Asia/Kathmandu", "en_US").shortTime(afternoon), "8:45 PM");
}

TEST(DateFormat, FollowsAPatternInTheUsersZoneAndLanguage) {
    EXPECT_EQ(DateFormat("Europe/Berlin", "en_US").byPattern(afternoon, u"EEE MMM d, yyyy HH:mm"),
              "Thu Mar 5, 2026 16:00");
    EXPECT_EQ(DateFormat("Europe/Berlin", "de_DE").byPattern(afternoon, u"EEE MMM d, yyyy HH:mm"),
              "Do. März 5, 2026 16:00");
}

TEST(DateFormat, KeepsFormattersApart) {
    const DateFormat format("UTC", "en_US");
    EXPECT_EQ(format.byPattern(afternoon, u"HH:mm"), "15:00");
    EXPECT_EQ(format.byPattern(afternoon, u"yyyy-MM-dd"), "2026-03-05");
    EXPECT_EQ(format.byPattern(afternoon, u"HH:mm"), "15:00");
}

TEST(DateFormat, WritesSomethingForEveryInstant) {
    const DateFormat format("UTC", "en_US");
    for (const double seconds : {-1e12, 0.0, 1e12, 1e300, -1e300})
        EXPECT_FALSE(format.dateAndTime(Instant{seconds}).empty()) << seconds;
}

} // namespace
} // namespace quillo::unicode
