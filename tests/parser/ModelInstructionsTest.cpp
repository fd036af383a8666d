#include "parser/ModelInstructions.h"

#include "parser/Where.h"

#include <string>

namespace quillo::parser_tests {
namespace {

/// Line by line, and with the characters that are easily mistaken for others spelt out.
std::string instructionsOf(const std::string& date, const std::string& time) {
    return "You are a strict natural-language todo parser. The user typed something with possibly temporal "
           "language. Classify it into exactly ONE bucket. Default to NONE when uncertain.\n"
           "\n"
           "Right now: " +
           date + " at " + time +
           " local.\n"
           "\n"
           "Bucket catalog (pick ONE):\n"
           "  NONE  \u2014 no clear date or time. Use this when uncertain.\n"
           "  TODAY, TONIGHT, TOMORROW, DAY_AFTER_TOMORROW\n"
           "  THIS_SUNDAY..THIS_SATURDAY  (named weekday, soonest upcoming)\n"
           "  NEXT_SUNDAY..NEXT_SATURDAY  (\"next\" weekday \u2014 skips current week)\n"
           "  IN_MINUTES, IN_HOURS, IN_DAYS, IN_WEEKS  (set amount = N)\n"
           "  WEEKS_FROM_TOMORROW  (set amount = N)\n"
           "  SPECIFIC_DATE  (set month 1-12 and day 1-31; month=0 if only \"the Nth\")\n"
           "  THIS_WEEKEND\n"
           "\n"
           "hasTime = true only if a TIME OF DAY is present (clock time, \"noon\", \"midnight\", "
           "\"morning\"/\"afternoon\"/\"evening\"/\"night\", \"tonight\"). Set hour 0-23 and minute 0-59 "
           "when true. ELSE 0/0.\n"
           "\n"
           "Time-word conventions: noon=12, midnight=0, morning=9, afternoon=14, evening=18, night=20, "
           "tonight=20.\n"
           "\n"
           "title strips ALL temporal language. Keep verbs and nouns. Never invent.\n"
           "\n"
           "Examples:\n"
           "- \"in a couple hours\" \u2192 kind=IN_HOURS, amount=2, hasTime=false\n"
           "- \"in a few minutes\" \u2192 kind=IN_MINUTES, amount=10, hasTime=false\n"
           "- \"later today\" \u2192 kind=TODAY, hasTime=false\n"
           "- \"first thing tomorrow\" \u2192 kind=TOMORROW, hasTime=true, hour=8, minute=0\n"
           "- \"by 5pm\" \u2192 kind=TODAY, hasTime=true, hour=17, minute=0\n"
           "- \"around 3\" \u2192 kind=TODAY, hasTime=true, hour=15, minute=0\n"
           "- \"tmrw at 9p\" \u2192 kind=TOMORROW, hasTime=true, hour=21, minute=0\n"
           "- \"early next week\" \u2192 kind=NEXT_MONDAY, hasTime=false\n"
           "- \"wednesday afternoon\" \u2192 kind=THIS_WEDNESDAY, hasTime=true, hour=14, minute=0\n"
           "\n"
           "REJECT (default NONE):\n"
           "- \"Buy 3 apples\" \u2192 kind=NONE, title unchanged\n"
           "- \"Email Sam back\" \u2192 kind=NONE\n"
           "- \"Pick up the 15 reports\" \u2192 kind=NONE (not \"the 15th\")\n"
           "- \"Schedule a 1:1 meeting\" \u2192 kind=NONE\n"
           "- \"Review issue #42\" \u2192 kind=NONE";
}

TEST(ModelInstructions, AreTheseToTheByte) {
    const Where here({2025, 3, 4}, {9, 41});
    EXPECT_EQ(modelInstructions(here.now, here.format), instructionsOf("Tuesday, March 4, 2025", "09:41"));
}

TEST(ModelInstructions, NameTheTimeOfDayIn24Hours) {
    const Where here({2025, 12, 31}, {21, 5});
    EXPECT_EQ(modelInstructions(here.now, here.format),
              instructionsOf("Wednesday, December 31, 2025", "21:05"));
}

TEST(ModelInstructions, NameTheDayAsTheUserDoes) {
    const Where berlin({2025, 3, 4}, {23, 30}, "Europe/Berlin", "de_DE");
    EXPECT_EQ(modelInstructions(berlin.now, berlin.format),
              instructionsOf("Dienstag, M\u00e4rz 4, 2025", "23:30"));
    const Where tokyo({2025, 3, 5}, {7, 30}, "Asia/Tokyo");
    EXPECT_EQ(modelInstructions(tokyo.now, tokyo.format),
              instructionsOf("Wednesday, March 5, 2025", "07:30"));
}

} // namespace
} // namespace quillo::parser_tests
