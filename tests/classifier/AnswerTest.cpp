#include "classifier/Answer.h"

#include "classifier/Impressions.h"

#include <gtest/gtest.h>

namespace quillo::classifier {
namespace {

struct Expected {
    std::string kind;
    std::int64_t amount = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
};

void expectDay(const Answer& answer, const Expected& expected) {
    EXPECT_EQ(answer.kind, expected.kind);
    EXPECT_EQ(answer.amount, expected.amount);
    EXPECT_EQ(answer.month, expected.month);
    EXPECT_EQ(answer.day, expected.day);
}

void expectTime(const Answer& answer, int hour, int minute) {
    EXPECT_TRUE(answer.hasTime);
    EXPECT_EQ(answer.hour, hour);
    EXPECT_EQ(answer.minute, minute);
}

// 4 March 2025 is a Tuesday.

TEST(Answer, KeepsKindsThatAreAskedForAsTheyAre) {
    const Answer answer = Said("tmrw", "TOMORROW").on(2025, 3, 4);
    expectDay(answer, {"TOMORROW"});
    EXPECT_FALSE(answer.hasTime);
    EXPECT_EQ(answer.title, "");
    EXPECT_GT(answer.score, 0.99);
}

TEST(Answer, NothingIsCutWithoutADate) {
    const Answer answer = Said("tmrw", "NONE").on(2025, 3, 4);
    expectDay(answer, {"NONE"});
    EXPECT_EQ(answer.title, "tmrw");
}

TEST(Answer, CountsInDigitsAndWords) {
    expectDay(Said("in 3 wks", "IN_WEEKS").digits({Role::Amount}).on(2025, 3, 4), {"IN_WEEKS", 3});
    expectDay(Said("in a couple wks", "IN_WEEKS").amount(2).on(2025, 3, 4), {"IN_WEEKS", 2});
    expectDay(Said("in 0 wks", "IN_WEEKS").digits({Role::Amount}).on(2025, 3, 4), {"NONE"});
    expectDay(Said("in 1000 wks", "IN_WEEKS").digits({Role::Amount}).on(2025, 3, 4), {"NONE"});
    expectDay(Said("in 99999 wks", "IN_WEEKS").digits({Role::Amount}).amount(0).on(2025, 3, 4), {"NONE"});
}

TEST(Answer, MonthsFromNowHaveTheSameDayOrTheirLast) {
    expectDay(Said("in 3 months", "IN_MONTHS").digits({Role::Amount}).on(2025, 3, 4), {"IN_DAYS", 92});
    expectDay(Said("in 1 month", "IN_MONTHS").digits({Role::Amount}).on(2025, 1, 31), {"IN_DAYS", 28});
    expectDay(Said("in 12 months", "IN_MONTHS").digits({Role::Amount}).on(2024, 2, 29), {"IN_DAYS", 365});
}

TEST(Answer, DaysOfNextWeekAreCountedFromItsMonday) {
    expectDay(Said("mid nxt week", "NEXT_WEEK_WEDNESDAY").on(2025, 3, 4), {"IN_DAYS", 8});
    expectDay(Said("end of nxt week", "NEXT_WEEK_FRIDAY").on(2025, 3, 9), {"IN_DAYS", 5}); // on a Sunday
    expectDay(Said("nxt week mon", "NEXT_WEEK_MONDAY").on(2025, 3, 9), {"IN_DAYS", 1});
    expectDay(Said("sun next wk", "NEXT_WEEK_SUNDAY").on(2025, 3, 3), {"IN_DAYS", 13}); // ends the week
    expectDay(Said("a week from tues", "WEEK_AFTER_TUESDAY").amount(1).on(2025, 3, 4), {"IN_DAYS", 14});
    expectDay(Said("a week from mon", "WEEK_AFTER_MONDAY").amount(1).on(2025, 3, 4), {"IN_DAYS", 13});
    expectDay(Said("fortnight from sat", "WEEK_AFTER_SATURDAY").amount(2).on(2025, 3, 4), {"IN_DAYS", 18});
    expectDay(Said("3 wks from mon", "WEEK_AFTER_MONDAY").digits({Role::Amount}).on(2025, 3, 4),
              {"IN_DAYS", 27});
    expectDay(Said("0 wks from mon", "WEEK_AFTER_MONDAY").digits({Role::Amount}).on(2025, 3, 4), {"NONE"});
    expectDay(Said("next wkend", "NEXT_WEEKEND").on(2025, 3, 4), {"IN_DAYS", 11});
    expectDay(Said("next wkend", "NEXT_WEEKEND").on(2025, 3, 8), {"IN_DAYS", 7});
    expectDay(Said("next wkend", "NEXT_WEEKEND").on(2025, 3, 9), {"IN_DAYS", 13});
    expectDay(Said("week after next", "WEEK_AFTER_NEXT").on(2025, 3, 4), {"IN_DAYS", 13});
}

TEST(Answer, DaysBeforeAndAfterAHoliday) { // Thanksgiving is on 27 November 2025, and on 26 November 2026.
    const auto before = [](int days) {
        return Said("b4 turkey day", "THANKSGIVING").shift(Shift::DaysBefore).amount(days);
    };
    const auto after = [](int days) {
        return Said("after it", "THANKSGIVING").shift(Shift::DaysAfter).amount(days);
    };
    expectDay(before(1).on(2025, 11, 20), {"IN_DAYS", 6});
    expectDay(before(7).on(2025, 11, 20), {"TODAY"});
    expectDay(before(7).on(2025, 11, 21), {"IN_DAYS", 363}); // of the next one
    expectDay(
        Said("3 days b4", "THANKSGIVING").shift(Shift::DaysBefore).digits({Role::Amount}).on(2025, 11, 20),
        {"IN_DAYS", 4});
    expectDay(after(1).on(2025, 11, 28), {"TODAY"});
    expectDay(after(7).on(2025, 11, 28), {"IN_DAYS", 6});
    expectDay(after(60).on(2026, 1, 5), {"IN_DAYS", 21}); // of last year's
    expectDay(before(0).on(2025, 11, 20), {"NONE"});
    expectDay(
        Said("2 wks b4 easter", "EASTER").shift(Shift::WeeksBefore).digits({Role::Amount}).on(2025, 3, 4),
        {"IN_DAYS", 33}); // of 20 April
    expectDay(Said("a wk after easter", "EASTER").shift(Shift::WeeksAfter).amount(1).on(2025, 4, 25),
              {"IN_DAYS", 2});
    expectDay(Said("a wk after easter", "EASTER").shift(Shift::FromTomorrow).amount(1).on(2025, 4, 25),
              {"NONE"});
}

TEST(Answer, DaysBeforeAndAfterADate) {
    const auto christmas = [](Shift shift, int amount) {
        return Said("xmas", "SPECIFIC_DATE").month(12).day(25).shift(shift).amount(amount);
    };
    expectDay(christmas(Shift::DaysBefore, 2).on(2025, 12, 20), {"IN_DAYS", 3});
    expectDay(christmas(Shift::DaysBefore, 2).on(2025, 12, 23), {"TODAY"});
    expectDay(christmas(Shift::DaysBefore, 2).on(2025, 12, 24), {"IN_DAYS", 364});
    expectDay(christmas(Shift::WeeksAfter, 1).on(2026, 1, 1), {"TODAY"});
    expectDay(Said("day b4 7/4", "NUMERIC_DATE")
                  .shift(Shift::DaysBefore)
                  .amount(1)
                  .digits({Role::Strip, Role::FirstOfPair, Role::SecondOfPair})
                  .on(2025, 7, 1),
              {"IN_DAYS", 2});
    const auto ofMonth = [](Shift shift) {
        return Said("3 days of the 31st", "SPECIFIC_DATE")
            .month(0)
            .shift(shift)
            .digits({Role::Amount, Role::Day});
    };
    expectDay(ofMonth(Shift::DaysBefore).on(2025, 4, 4), {"IN_DAYS", 54}); // April has no 31st
    expectDay(ofMonth(Shift::DaysAfter).on(2025, 4, 2), {"IN_DAYS", 1});
}

TEST(Answer, DaysAndMonthsFromTomorrow) {
    const auto counted = [](std::string_view kind) {
        return Said("1 from tmrw", kind).shift(Shift::FromTomorrow).digits({Role::Amount});
    };
    expectDay(counted("IN_DAYS").on(2025, 3, 4), {"IN_DAYS", 2});
    expectDay(counted("IN_MONTHS").on(2025, 3, 4), {"IN_DAYS", 32});
    expectDay(counted("IN_MONTHS").on(2025, 1, 30), {"IN_DAYS", 29}); // 28 February
    expectDay(Said("1 day b4", "IN_DAYS").shift(Shift::DaysBefore).digits({Role::Amount}).on(2025, 3, 4),
              {"NONE"});
}

TEST(Answer, DaysOfThisAndNextMonth) {
    expectDay(Said("eom", "THIS_MONTH_DAY").day(31).on(2025, 2, 4), {"IN_DAYS", 24});
    expectDay(Said("eom", "THIS_MONTH_DAY").day(31).on(2025, 2, 28), {"TODAY"});
    expectDay(Said("mid month", "THIS_MONTH_DAY").day(15).on(2025, 3, 20), {"IN_DAYS", 26}); // has passed
    expectDay(Said("nxt month", "NEXT_MONTH_DAY").day(1).on(2025, 12, 31), {"IN_DAYS", 1});
    expectDay(Said("5th of nxt month", "NEXT_MONTH_DAY").digits({Role::Day}).on(2025, 3, 4), {"IN_DAYS", 32});
    expectDay(Said("end of nxt month", "NEXT_MONTH_DAY").day(31).on(2025, 1, 31), {"IN_DAYS", 28});
}

TEST(Answer, DatesHaveTheirMonthAndDay) {
    expectDay(Said("3rd of march", "SPECIFIC_DATE").month(3).digits({Role::Day}).on(2025, 3, 4),
              {"SPECIFIC_DATE", 0, 3, 3});
    expectDay(Said("end of feb", "SPECIFIC_DATE").month(2).day(31).on(2025, 3, 4),
              {"SPECIFIC_DATE", 0, 2, 28});
    expectDay(Said("end of feb", "SPECIFIC_DATE").month(2).day(31).on(2027, 3, 4),
              {"IN_DAYS", 362}); // 2028 has a 29th
    expectDay(Said("31 april", "SPECIFIC_DATE").month(4).digits({Role::Day}).on(2025, 3, 4), {"NONE"});
    expectDay(Said("32 april", "SPECIFIC_DATE").month(4).digits({Role::Day}).on(2025, 3, 4), {"NONE"});
    expectDay(Said("29 feb", "SPECIFIC_DATE").month(2).digits({Role::Day}).on(2025, 3, 4),
              {"NONE"}); // too far away
    expectDay(Said("29 feb", "SPECIFIC_DATE").month(2).digits({Role::Day}).on(2028, 2, 1), {"IN_DAYS", 28});
}

TEST(Answer, AYearMustBeTheOneThatIsMeantAnyway) {
    const auto dated = [](const char* text) {
        return Said(text, "SPECIFIC_DATE").month(5).digits({Role::Day, Role::Year}).on(2025, 3, 4);
    };
    expectDay(dated("3 may 2025"), {"SPECIFIC_DATE", 0, 5, 3});
    expectDay(dated("3 may 25"), {"SPECIFIC_DATE", 0, 5, 3});
    expectDay(dated("3 may 2026"), {"NONE"});
    expectDay(dated("3 may 2024"), {"NONE"});
}

TEST(Answer, TheNthIsOfThisMonthOrTheNext) {
    expectDay(Said("the 15th", "SPECIFIC_DATE").month(0).digits({Role::Day}).on(2025, 3, 4),
              {"SPECIFIC_DATE", 0, 0, 15});
    expectDay(Said("the 3rd", "SPECIFIC_DATE").month(0).digits({Role::Day}).on(2025, 3, 4),
              {"SPECIFIC_DATE", 0, 0, 3});
    // In December the one that has passed would be taken for one of last January.
    expectDay(Said("the 3rd", "SPECIFIC_DATE").month(0).digits({Role::Day}).on(2025, 12, 20),
              {"SPECIFIC_DATE", 0, 1, 3});
    expectDay(Said("the 31st", "SPECIFIC_DATE").month(0).digits({Role::Day}).on(2025, 4, 4),
              {"NONE"}); // April has none
}

TEST(Answer, PairsOfNumbersGoByTheUsersPlace) {
    const auto pair = [](const char* text, const char* locale) {
        return Said(text, "NUMERIC_DATE")
            .digits({Role::FirstOfPair, Role::SecondOfPair, Role::Year})
            .on(2025, 3, 4, locale);
    };
    expectDay(pair("5/12", "en_US"), {"SPECIFIC_DATE", 0, 5, 12});
    expectDay(pair("5/12", "en"), {"SPECIFIC_DATE", 0, 5, 12});
    expectDay(pair("5/12", "C"), {"SPECIFIC_DATE", 0, 5, 12});
    expectDay(pair("5/12", "en_US_POSIX"), {"SPECIFIC_DATE", 0, 5, 12});
    expectDay(pair("5/12", "en_GB"), {"SPECIFIC_DATE", 0, 12, 5});
    expectDay(pair("5/12", "de"), {"SPECIFIC_DATE", 0, 12, 5});
    expectDay(pair("13/5", "en_US"), {"SPECIFIC_DATE", 0, 5, 13});
    expectDay(pair("5/13", "en_GB"), {"SPECIFIC_DATE", 0, 5, 13});
    expectDay(pair("13/14", "en_US"), {"NONE"});
    expectDay(pair("0/5", "en_US"), {"NONE"});
    expectDay(pair("5/12/25", "en_US"), {"SPECIFIC_DATE", 0, 5, 12});
    expectDay(pair("5/12/2031", "en_US"), {"NONE"});
}

TEST(Answer, DatesThatBeginWithTheYear) {
    const auto iso = [](const char* text) {
        return Said(text, "NUMERIC_DATE").digits({Role::Year, Role::Month, Role::Day}).on(2025, 3, 4);
    };
    expectDay(iso("2025-05-12"), {"SPECIFIC_DATE", 0, 5, 12});
    expectDay(iso("2025-13-12"), {"SPECIFIC_DATE", 0, 12, 13});
    expectDay(iso("2024-05-12"), {"NONE"});
}

TEST(Answer, TimesInDigits) {
    expectTime(Said("tmrw 9p", "TOMORROW").digits({Role::Hour}).hour(21).on(2025, 3, 4), 21, 0);
    expectTime(Said("tmrw 9:30", "TOMORROW").digits({Role::Hour, Role::Minute}).hour(9).on(2025, 3, 4), 9,
               30);
    expectTime(Said("tmrw 12a", "TOMORROW").digits({Role::Hour}).hour(0).on(2025, 3, 4), 0, 0);
    expectTime(Said("tmrw 12", "TOMORROW").digits({Role::Hour}).hour(12).on(2025, 3, 4), 12, 0);
    expectTime(Said("tmrw 930p", "TOMORROW").digits({Role::HourAndMinute}).hour(21).on(2025, 3, 4), 21, 30);
    expectTime(Said("tmrw 1530", "TOMORROW").digits({Role::HourAndMinute}).on(2025, 3, 4), 15, 30);
    expectTime(Said("tmrw 24:00", "TOMORROW").digits({Role::Hour, Role::Minute}).hour(0).on(2025, 3, 4), 0,
               0);
    expectTime(Said("tmrw half past 6", "TOMORROW").digits({Role::Hour}).hour(18).minute(30).on(2025, 3, 4),
               18, 30);
    expectDay(Said("tmrw 25", "TOMORROW").digits({Role::Hour}).on(2025, 3, 4), {"NONE"});
    expectDay(Said("tmrw 9:75", "TOMORROW").digits({Role::Hour, Role::Minute}).hour(9).on(2025, 3, 4),
              {"NONE"});
    expectDay(Said("tmrw 93", "TOMORROW").digits({Role::HourAndMinute}).on(2025, 3, 4), {"NONE"});
}

TEST(Answer, TimesInWords) {
    expectTime(Said("tmrw at noon", "TOMORROW").hour(12).minute(0).on(2025, 3, 4), 12, 0);
    expectTime(Said("tmrw quarter to five", "TOMORROW").hour(16).minute(45).on(2025, 3, 4), 16, 45);
}

TEST(Answer, OfWhichTheNetworkIsNotSureIsNone) {
    Said unsure("tmrw", "TOMORROW");
    ModelReference reference;
    Impression impression;
    const std::string text = "tmrw";
    const std::vector<Token> tokens = tokenize(text);
    const Weights& weights = programWeights();
    impression.roles.resize(1);
    impression.kind.assign(weights.kinds.size(), 0.0F);
    impression.kind[3] = 1; // more likely than any other, and not likely
    impression.amount.assign(weights.amounts.size(), 0.0F);
    impression.month.assign(monthCount, 0.0F);
    impression.day.assign(dayCount, 0.0F);
    impression.hour.assign(hourCount, 0.0F);
    impression.minute.assign(weights.minutes.size(), 0.0F);
    impression.shift.assign(shiftCount, 0.0F);
    const Answer answer = answerTo(weights, text, tokens, impression, reference);
    expectDay(answer, {"NONE"});
    EXPECT_EQ(answer.title, "tmrw");
    EXPECT_LT(answer.score, sure);
}

TEST(Answer, WordsAreNoNumbers) {
    // The network may say so all the same.
    Said said("in wks", "IN_WEEKS");
    expectDay(said.amount(4).on(2025, 3, 4), {"IN_WEEKS", 4});
}

TEST(Answer, WordsThatNoPhraseHasAreKept) {
    EXPECT_EQ(Said("groceries tmrw", "TOMORROW").on(2025, 3, 4).title, "groceries");
    EXPECT_EQ(Said("car tomorow ok", "TOMORROW").on(2025, 3, 4).title, "car"); // two letters tell too little
}

TEST(Answer, TitleIsWhatIsLeft) {
    EXPECT_EQ(Said("call mom tmrw", "TOMORROW").keep({0, 1}).on(2025, 3, 4).title, "call mom");
    EXPECT_EQ(Said("tmrw: call  mom!", "TOMORROW").keep({2, 3, 4}).on(2025, 3, 4).title, "call mom!");
    EXPECT_EQ(Said("call tmrw mom", "TOMORROW").keep({0, 2}).on(2025, 3, 4).title, "call mom");
    EXPECT_EQ(Said("call mom tmrw, bring cake", "TOMORROW").keep({0, 1, 4, 5}).on(2025, 3, 4).title,
              "call mom, bring cake");
    EXPECT_EQ(Said("call mom, tmrw", "TOMORROW").keep({0, 1, 2}).on(2025, 3, 4).title, "call mom");
    EXPECT_EQ(Said("call mom (tmrw)", "TOMORROW").keep({0, 1, 2}).on(2025, 3, 4).title, "call mom");
    EXPECT_EQ(Said("tmrw – call Zoë…", "TOMORROW").keep({1, 2, 3, 4}).on(2025, 3, 4).title, "call Zoë…");
    EXPECT_EQ(Said("buy 3 eggs tmrw", "TOMORROW").keep({0, 1, 2}).on(2025, 3, 4).title, "buy 3 eggs");
}

} // namespace
} // namespace quillo::classifier
