#include "classifier/Holidays.h"

#include <gtest/gtest.h>

namespace quillo::classifier {
namespace {

using namespace std::chrono;

constexpr sys_days newYear(int y) {
    return year(y) / January / 1;
}

// From printed calendars.

TEST(Holidays, FallOnTheirWeekdays) {
    EXPECT_EQ(comingHoliday("THANKSGIVING", newYear(2025)), sys_days(2025y / November / 27));
    EXPECT_EQ(comingHoliday("CYBER_MONDAY", newYear(2024)), sys_days(2024y / December / 2));
    EXPECT_EQ(comingHoliday("MLK_DAY", newYear(2026)), sys_days(2026y / January / 19));
    EXPECT_EQ(comingHoliday("PRESIDENTS_DAY", newYear(2026)), sys_days(2026y / February / 16));
    EXPECT_EQ(comingHoliday("COLUMBUS_DAY", newYear(2025)), sys_days(2025y / October / 13));
    EXPECT_EQ(comingHoliday("LABOR_DAY", newYear(2025)), sys_days(2025y / September / 1));
    EXPECT_EQ(comingHoliday("MEMORIAL_DAY", newYear(2025)), sys_days(2025y / May / 26));
    EXPECT_EQ(comingHoliday("MOTHERS_DAY", newYear(2025)), sys_days(2025y / May / 11));
    EXPECT_EQ(comingHoliday("FATHERS_DAY", newYear(2025)), sys_days(2025y / June / 15));
}

TEST(Holidays, EasterMoves) {
    EXPECT_EQ(comingHoliday("EASTER", newYear(2024)), sys_days(2024y / March / 31));
    EXPECT_EQ(comingHoliday("EASTER", newYear(2025)), sys_days(2025y / April / 20));
    EXPECT_EQ(comingHoliday("EASTER", newYear(2026)), sys_days(2026y / April / 5));
    EXPECT_EQ(comingHoliday("EASTER", newYear(2038)), sys_days(2038y / April / 25));
    EXPECT_EQ(comingHoliday("GOOD_FRIDAY", newYear(2025)), sys_days(2025y / April / 18));
    EXPECT_EQ(comingHoliday("EASTER_MONDAY", newYear(2025)), sys_days(2025y / April / 21));
}

TEST(Holidays, AreTodayOrToCome) {
    EXPECT_EQ(comingHoliday("THANKSGIVING", sys_days(2025y / November / 27)),
              sys_days(2025y / November / 27));
    EXPECT_EQ(comingHoliday("THANKSGIVING", sys_days(2025y / November / 28)),
              sys_days(2026y / November / 26));
}

TEST(Holidays, OthersAreNone) {
    EXPECT_EQ(comingHoliday("TOMORROW", newYear(2025)), std::nullopt);
}

} // namespace
} // namespace quillo::classifier
