#include "parser/ParserService.h"

#include "parser/Where.h"

namespace quillo::parser_tests {
namespace {

TEST(ParserService, LeavesBlankTextAlone) {
    const Where here;
    const Parse parse = here.parser.parse("   ", here.now);
    EXPECT_EQ(parse.task, (ParsedTask{"", {}, {}}));
    EXPECT_FALSE(parse.hint);
    EXPECT_EQ(parse.path, ParsePath::None);
}

TEST(ParserService, LeavesPlainTitlesAlone) {
    const Where here;
    const Parse parse = here.parser.parse(" Buy  milk\n", here.now);
    EXPECT_EQ(parse.task, (ParsedTask{"Buy  milk", {}, {}}));
    EXPECT_EQ(parse.path, ParsePath::None);
}

TEST(ParserService, TellsTheRulesDate) {
    const Where here;
    const Parse parse = here.parser.parse("Call mom tomorrow", here.now);
    EXPECT_EQ(parse.task.title, "Call mom");
    EXPECT_EQ(parse.task.interpretation, "Wed Mar 5, 2025 09:00");
    EXPECT_EQ(parse.task.dueDate, here.calendar.instant({2025, 3, 5}, {9, 0}));
    EXPECT_EQ(parse.path, ParsePath::Rules);
}

TEST(ParserService, SaysWhenAHintLeadsNowhere) {
    const Where here;
    const Parse parse = here.parser.parse("Maybe fix the market page", here.now);
    EXPECT_EQ(parse.task, (ParsedTask{"Maybe fix the market page", {}, "regex+ai miss"}));
    EXPECT_TRUE(parse.hint);
    EXPECT_EQ(parse.path, ParsePath::Miss);
}

TEST(ParserService, ATextThatIsAllDateIsItsOwnTitle) {
    const Where here;
    EXPECT_TRUE(means(here, " tomorrow ", "2025-03-05 09:00 | tomorrow"));
}

TEST(ParserService, WritesTheInterpretationInTheUsersLanguage) {
    const Where here({2025, 3, 4}, {10, 0}, "Europe/Berlin", "de_DE");
    EXPECT_EQ(here.parser.parse("Anruf tomorrow", here.now).task.interpretation, "Mi. März 5, 2025 09:00");
}

TEST(ParserService, ReadsMalformedTextAsReplacementCharacters) {
    const Where here;
    EXPECT_TRUE(means(here, "a\xFF tomorrow", "2025-03-05 09:00 | a\uFFFD"));
}

TEST(ParserService, SurvivesOneMegabyte) {
    const Where here;
    const std::string filler(1'000'000, 'x');
    EXPECT_EQ(here.parser.parse(filler + " tomorrow", here.now).task.title, filler);
    for (const char* piece :
         {"1", " ", "in ", "at ", "1:", "the ", "tomorrow ", "\u0661", "\U0001F438", "a\u0301"}) {
        std::string text = "at ";
        while (text.size() < 1'000'000)
            text += piece;
        const Parse parse = here.parser.parse(text, here.now);
        EXPECT_FALSE(parse.task.title.empty());
    }
}

TEST(ParserService, KeepsTextOfOtherScripts) {
    const Where here;
    EXPECT_TRUE(means(here, "לקנות חלב tomorrow at 5pm", "2025-03-05 17:00 | לקנות חלב"));
    EXPECT_TRUE(means(here, "🐸 feed tomorrow", "2025-03-05 09:00 | 🐸 feed"));
    EXPECT_TRUE(means(here, std::string("a\0b tomorrow", 12), std::string("2025-03-05 09:00 | a\0b", 22)));
}

} // namespace
} // namespace quillo::parser_tests
