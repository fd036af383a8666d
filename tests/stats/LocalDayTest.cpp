#include "stats/LocalDay.h"

#include "stats/StatsWorld.h"
#include "unicode/DateFormat.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace quillo {
namespace {

using namespace std::chrono;
using support::calendarIn;
using unicode::CivilCalendar;

std::string keyOf(const CivilCalendar& calendar, Instant instant) {
    return dayKey(localDay(calendar, instant));
}
std::string keyOf(const char* zone, double unixSeconds) {
    return keyOf(calendarIn(zone), Instant::fromUnixSeconds(unixSeconds));
}

TEST(LocalDay, IsTheOneInTheZone) {
    const double instant = 1741132800; // 2025-03-05 00:00:00 UTC
    EXPECT_EQ(keyOf("UTC", instant), "2025-03-05");
    EXPECT_EQ(keyOf("UTC", instant - 0.001), "2025-03-04");
    EXPECT_EQ(keyOf("America/New_York", instant), "2025-03-04");
    EXPECT_EQ(keyOf("Pacific/Kiritimati", instant), "2025-03-05");
    EXPECT_EQ(keyOf("Asia/Kathmandu", instant - 20700), "2025-03-05");
    EXPECT_EQ(keyOf("Asia/Kathmandu", instant - 20700.001), "2025-03-04");
}

TEST(LocalDay, EndsWithTheYear) {
    const double newYear = 1767225600; // 2026-01-01 00:00:00 UTC
    EXPECT_EQ(keyOf("Europe/Berlin", newYear - 3600.5), "2025-12-31");
    EXPECT_EQ(keyOf("Europe/Berlin", newYear - 3600), "2026-01-01");
    EXPECT_EQ(keyOf("America/New_York", newYear + 17999), "2025-12-31");
}

TEST(LocalDay, IsNamedInTheGregorianCalendarAndPlainDigitsForEverybody) {
    for (const char* locale : {"en_US", "th_TH", "fa_IR", "ar_EG", "ar_SA", "ja_JP@calendar=japanese",
                               "he_IL@calendar=hebrew", "xx"}) {
        EXPECT_EQ(keyOf(calendarIn("Asia/Bangkok", locale), Instant::fromUnixSeconds(1741132800)),
                  "2025-03-05")
            << locale;
    }
}

struct ClockChange {
    const char* zone;
    double at; ///< seconds since 1970
    const char* before;
    const char* after;
};

TEST(LocalDay, IsRightOnBothSidesOfAClockChange) {
    for (const ClockChange& change : std::vector<ClockChange>{
             {"Europe/Berlin", 1743296400, "2025-03-30", "2025-03-30"},       // 2:00 -> 3:00
             {"Europe/Berlin", 1761440400, "2025-10-26", "2025-10-26"},       // 3:00 -> 2:00
             {"America/Sao_Paulo", 1541300400, "2018-11-03", "2018-11-04"},   // 0:00 -> 1:00
             {"America/Sao_Paulo", 1550368800, "2019-02-16", "2019-02-16"},   // 0:00 -> 23:00
             {"Asia/Pyongyang", 1525446000, "2018-05-04", "2018-05-05"},      // 23:30 -> 0:00
             {"Asia/Beirut", 1743285600, "2025-03-29", "2025-03-30"},         // 0:00 -> 1:00
             {"Australia/Lord_Howe", 1743865200, "2025-04-06", "2025-04-06"}, // 2:00 -> 1:30
             {"Pacific/Apia", 1325239200, "2011-12-29", "2011-12-31"},        // a day is skipped
         }) {
        EXPECT_EQ(keyOf(change.zone, change.at - 1), change.before) << change.zone;
        EXPECT_EQ(keyOf(change.zone, change.at), change.after) << change.zone;
    }
}

TEST(LocalDay, StaysWithinFourDigitYears) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const char* zone : {"UTC", "Pacific/Kiritimati", "America/New_York"}) {
        const CivilCalendar calendar = calendarIn(zone);
        for (const double late : {CivilCalendar::latest.secondsSince2001 + 86400, 1e12, 1e300, infinity})
            EXPECT_EQ(keyOf(calendar, {late}), "9999-12-31") << zone << ' ' << late;
        EXPECT_EQ(keyOf(calendar, {-1e12}), "0000-01-01") << zone;
        EXPECT_EQ(keyOf(calendar, {-infinity}), "0000-01-01") << zone;
        EXPECT_EQ(keyOf(calendar, {std::numeric_limits<double>::quiet_NaN()}), "0000-01-01") << zone;
    }
    // The first second of the year 10000 there is still in 9999 here.
    EXPECT_EQ(keyOf(calendarIn("America/New_York"), CivilCalendar::latest), "9999-12-31");
    EXPECT_EQ(keyOf(calendarIn("UTC"), CivilCalendar::earliest), "0001-01-01");
    EXPECT_EQ(keyOf(calendarIn("UTC"), CivilCalendar::earliest + -1), "0000-12-31");
    EXPECT_EQ(dayKey(local_days{year{0} / 1 / 1} - days{1}), "");
    EXPECT_EQ(dayKey(local_days{year{10000} / 1 / 1}), "");
}

/// What the day is, says ICU's own formatter.
RC_GTEST_PROP(LocalDayProperty, IsWhatADateFormatSays, ()) {
    const std::string zone = *rc::gen::element<std::string>(
        "UTC", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "America/Sao_Paulo", "Asia/Beirut",
        "Asia/Kathmandu", "Pacific/Apia", "Asia/Pyongyang", "Africa/Monrovia");
    const unicode::DateFormat format(zone, "en_US_POSIX");
    const CivilCalendar calendar = calendarIn(zone);
    // From 1900 to 2100, close to hours as often as not.
    const auto hour = *rc::gen::inRange<std::int64_t>(-613'000, 1'140'000);
    const double within = *rc::gen::element(0.0, -0.001, 0.001, 1799.5, 3600.0 * hour / 1'140'000);
    const Instant instant = Instant::fromUnixSeconds(3600.0 * static_cast<double>(hour) + within);
    RC_ASSERT(keyOf(calendar, instant) == format.byPattern(instant, u"yyyy-MM-dd"));
    RC_ASSERT(hasDay(calendar, localDay(calendar, instant)));
}

TEST(HasDay, KnowsTheDaysThatAZoneSkipped) {
    const CivilCalendar apia = calendarIn("Pacific/Apia");
    EXPECT_TRUE(hasDay(apia, local_days{2011y / 12 / 29}));
    EXPECT_FALSE(hasDay(apia, local_days{2011y / 12 / 30}));
    EXPECT_TRUE(hasDay(apia, local_days{2011y / 12 / 31}));
    const CivilCalendar kwajalein = calendarIn("Pacific/Kwajalein");
    int skipped = 0;
    for (Day day{1993y / 1 / 1}; day < Day{1994y / 1 / 1}; day += days{1})
        skipped += !hasDay(kwajalein, day);
    EXPECT_EQ(skipped, 1);
}

TEST(HasDay, HasEveryDayInZonesWithOrdinaryClockChanges) {
    for (const char* zone : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "America/Sao_Paulo",
                             "Asia/Beirut", "Asia/Pyongyang", "Africa/Cairo", "UTC"}) {
        const CivilCalendar calendar = calendarIn(zone);
        for (Day day{2010y / 1 / 1}; day < Day{2030y / 1 / 1}; day += days{1})
            ASSERT_TRUE(hasDay(calendar, day)) << zone << ' ' << dayKey(day);
    }
}

TEST(DayKey, ReadsBack) {
    for (Day day{year{0} / 1 / 1}; day < Day{year{3} / 1 / 1}; day += days{1})
        ASSERT_EQ(parseDayKey(dayKey(day)), day) << dayKey(day);
    for (Day day{2023y / 1 / 1}; day < Day{2029y / 1 / 1}; day += days{1})
        ASSERT_EQ(parseDayKey(dayKey(day)), day) << dayKey(day);
    EXPECT_EQ(parseDayKey("9999-12-31"), Day{year{9999} / 12 / 31});
    EXPECT_EQ(parseDayKey("2024-02-29"), Day{2024y / 2 / 29});
}

TEST(DayKey, SortsByDate) {
    std::string before = dayKey(Day{year{995} / 1 / 1});
    for (Day day{year{995} / 1 / 2}; day < Day{year{1005} / 1 / 1}; day += days{1}) {
        const std::string key = dayKey(day);
        ASSERT_LT(before, key);
        before = key;
    }
}

TEST(DayKey, IsNotReadFromAnythingElse) {
    for (const std::string& key : std::vector<std::string>{"",
                                                           "2025",
                                                           "2025-03",
                                                           "2025-3-5",
                                                           "2025-03-5",
                                                           "2025-03-05 ",
                                                           " 2025-03-05",
                                                           "2025-03-05T",
                                                           "2025/03/05",
                                                           "2025-02-29",
                                                           "2025-04-31",
                                                           "2025-00-10",
                                                           "2025-13-01",
                                                           "2025-01-00",
                                                           "25-01-01",
                                                           "10000-01-01",
                                                           "-001-01-01",
                                                           "+025-01-01",
                                                           "2025-+1-01",
                                                           "garbage",
                                                           "\xD9\xA2\xD9\xA0",
                                                           std::string("2025-03-05\0", 11),
                                                           std::string("\0", 1),
                                                           std::string(100'000, '9')})
        EXPECT_FALSE(parseDayKey(key)) << key;
}

} // namespace
} // namespace quillo
