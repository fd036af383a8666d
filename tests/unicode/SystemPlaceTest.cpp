#include "unicode/SystemPlace.h"

#include "support/EnvironmentVariable.h"
#include "unicode/CivilCalendar.h"

#include <gtest/gtest.h>

#include <ctime>

namespace quillo::unicode {
namespace {

using support::EnvironmentVariable;

TEST(TimeZones, AreKnownByName) {
    for (const char* name : {"Europe/Berlin", "UTC", "EST5EDT", "GMT+05:30"})
        EXPECT_TRUE(isKnownTimeZone(name)) << name;
    for (const std::string& name : {std::string(), std::string("Europe/Atlantis"), std::string("Etc/Unknown"),
                                    std::string("UTC\0x", 5), std::string(10'000, 'x')})
        EXPECT_FALSE(isKnownTimeZone(name)) << name;
}

/// The system's zone where TZ has that value; the C library looks at it as well.
std::string zoneWhere(const char* variable) {
    const EnvironmentVariable zone("TZ", variable);
    tzset();
    return systemTimeZone();
}

TEST(SystemTimeZone, IsWhatTzNames) {
    EXPECT_EQ(zoneWhere("Europe/Berlin"), "Europe/Berlin");
    EXPECT_EQ(zoneWhere(":Asia/Tokyo"), "Asia/Tokyo");
    EXPECT_EQ(zoneWhere("/usr/share/zoneinfo/Asia/Tokyo"), "Asia/Tokyo");
    EXPECT_EQ(zoneWhere(":/usr/share/zoneinfo/America/New_York"), "America/New_York");
    EXPECT_EQ(zoneWhere(""), "UTC");
}

TEST(SystemTimeZone, UnderstandsRulesInTz) {
    EXPECT_EQ(zoneWhere("XYZ-5"), "GMT+05:00");
    EXPECT_EQ(zoneWhere("GMT+3"), "GMT-03:00"); // POSIX counts westwards
    EXPECT_EQ(zoneWhere("<+0545>-5:45"), "GMT+05:45");
    const auto calendar = CivilCalendar::create(zoneWhere("CET-1CEST,M3.5.0,M10.5.0/3"), "en_US");
    ASSERT_TRUE(calendar);
    EXPECT_EQ(calendar->offsetFromUtc(Instant::fromUnixSeconds(1741161600)), 3600); // in March
    EXPECT_EQ(calendar->offsetFromUtc(Instant::fromUnixSeconds(1751529600)), 7200); // in July
}

TEST(SystemTimeZone, IsAlwaysOneThatIsKnown) {
    for (const char* variable : {"Nowhere/AtAll", ":", "/", "\x1b[31m", "/etc/localtime", ":/etc/localtime"})
        EXPECT_TRUE(isKnownTimeZone(zoneWhere(variable))) << variable;
}

TEST(SystemLocale, IsTheFirstOfItsVariablesThatIsSet) {
    const EnvironmentVariable all("LC_ALL", "");
    const EnvironmentVariable lang("LANG", "fr_FR.UTF-8");
    {
        const EnvironmentVariable time("LC_TIME", "de_DE.UTF-8@euro");
        EXPECT_EQ(systemLocale(), "de_DE");
    }
    const EnvironmentVariable time("LC_TIME", "");
    EXPECT_EQ(systemLocale(), "fr_FR");
}

TEST(SystemLocale, IsEnglishWhereNoLanguageIsNamed) {
    for (const std::string& name :
         {std::string("C"), std::string("POSIX"), std::string("C.UTF-8"), std::string("garbage"),
          std::string("_"), std::string("%s"), std::string(10'000, 'x')}) {
        const EnvironmentVariable all("LC_ALL", name);
        EXPECT_EQ(systemLocale(), "en_US") << name;
    }
}

} // namespace
} // namespace quillo::unicode
