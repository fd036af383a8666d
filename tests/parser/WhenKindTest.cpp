#include "parser/WhenKind.h"

#include <gmock/gmock.h>

#include <string>

namespace quillo {
namespace {

struct Named {
    WhenKind kind;
    std::string_view rawValue;
};

constexpr Named all[] = {
    {WhenKind::None, "NONE"},
    {WhenKind::Today, "TODAY"},
    {WhenKind::Tonight, "TONIGHT"},
    {WhenKind::Tomorrow, "TOMORROW"},
    {WhenKind::DayAfterTomorrow, "DAY_AFTER_TOMORROW"},
    {WhenKind::ThisSunday, "THIS_SUNDAY"},
    {WhenKind::ThisMonday, "THIS_MONDAY"},
    {WhenKind::ThisTuesday, "THIS_TUESDAY"},
    {WhenKind::ThisWednesday, "THIS_WEDNESDAY"},
    {WhenKind::ThisThursday, "THIS_THURSDAY"},
    {WhenKind::ThisFriday, "THIS_FRIDAY"},
    {WhenKind::ThisSaturday, "THIS_SATURDAY"},
    {WhenKind::NextSunday, "NEXT_SUNDAY"},
    {WhenKind::NextMonday, "NEXT_MONDAY"},
    {WhenKind::NextTuesday, "NEXT_TUESDAY"},
    {WhenKind::NextWednesday, "NEXT_WEDNESDAY"},
    {WhenKind::NextThursday, "NEXT_THURSDAY"},
    {WhenKind::NextFriday, "NEXT_FRIDAY"},
    {WhenKind::NextSaturday, "NEXT_SATURDAY"},
    {WhenKind::InMinutes, "IN_MINUTES"},
    {WhenKind::InHours, "IN_HOURS"},
    {WhenKind::InDays, "IN_DAYS"},
    {WhenKind::InWeeks, "IN_WEEKS"},
    {WhenKind::WeeksFromTomorrow, "WEEKS_FROM_TOMORROW"},
    {WhenKind::SpecificDate, "SPECIFIC_DATE"},
    {WhenKind::ThisWeekend, "THIS_WEEKEND"},
};

TEST(WhenKind, HasARawValueThatNamesIt) {
    static_assert(std::size(all) == 26);
    for (const auto& [kind, rawValue] : all) {
        EXPECT_EQ(rawValueOf(kind), rawValue);
        const Result<WhenKind> read = whenKindOf(rawValue);
        ASSERT_TRUE(read) << rawValue;
        EXPECT_EQ(*read, kind) << rawValue;
    }
}

TEST(WhenKind, ListsItsRawValuesInOrder) {
    ASSERT_EQ(rawValues().size(), std::size(all));
    for (std::size_t i = 0; i < std::size(all); ++i)
        EXPECT_EQ(rawValues()[i], all[i].rawValue);
}

TEST(WhenKind, IsNamedByNothingElse) {
    for (const std::string foreign :
         {"NEXT_WEEK", "today", "Today", "", " TODAY", "TODAY ", "TODAY,TONIGHT", "TODA", "THIS_", "0", "\"",
          "T\xd0\x9e"
          "DAY"}) {
        const Result<WhenKind> read = whenKindOf(foreign);
        ASSERT_FALSE(read) << foreign;
        EXPECT_EQ(read.error().message, "Unexpected rawValue \"" + foreign + "\"");
    }
    EXPECT_FALSE(whenKindOf(std::string_view("TODAY\0", 6)));
    EXPECT_FALSE(whenKindOf(std::string(1 << 20, 'T')));
}

} // namespace
} // namespace quillo
