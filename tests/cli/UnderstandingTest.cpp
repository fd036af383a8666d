#include "cli/Understanding.h"

#include "cli/Classification.h"

#include <gtest/gtest.h>

#include <string>

namespace quillo::cli {
namespace {

const std::string typed = "call mom tmrw 9p";

Parse classified(std::optional<double> score) {
    const GeneratedTodo todo{.kind = WhenKind::Tomorrow,
                             .amount = -1,
                             .month = 2,
                             .day = 3,
                             .hasTime = true,
                             .hour = 21,
                             .minute = 5,
                             .title = "call\n\"mom\""};
    return {{"call mom", Instant::fromUnixSeconds(1741205100), "AI: …"},
            true,
            ParsePath::Model,
            Classification{todo, score}};
}

TEST(Understanding, NamesTheModelAsThePath) {
    EXPECT_EQ(membersOf(classified(0.5), typed, nullptr),
              R"("hint":true,"title":"call mom","due":1741205100,"interpretation":"AI: …","path":"model")");
}

TEST(Understanding, TheTraceSaysWhatTheModelSaid) {
    const Trace trace;
    const std::string classification =
        R"("path":"model","trace":[],"classification":{"kind":"TOMORROW","amount":-1,"month":2,"day":3,)"
        R"("hasTime":true,"hour":21,"minute":5,"title":"call\n\"mom\""})";
    EXPECT_TRUE(membersOf(classified(std::nullopt), typed, &trace).ends_with(classification));
    EXPECT_TRUE(membersOf(classified(0.97), typed, &trace).ends_with(classification + R"(,"score":0.97)"));
}

TEST(Understanding, TheClassificationCanBeResolvedAgain) {
    const Trace trace;
    const Parse parse = classified(0.97);
    const auto members = readJsonMembers("{" + membersOf(parse, typed, &trace) + "}", {"classification"});
    ASSERT_TRUE(members);
    const Result<GeneratedTodo> todo = readClassification(members->at("classification"));
    ASSERT_TRUE(todo);
    EXPECT_EQ(*todo, parse.classification->todo);
}

TEST(Understanding, TellsPeopleTheSame) {
    const Trace trace;
    const auto place = *Place::create("Europe/Berlin", "en_US");
    const std::string lines = "title           call mom\n"
                              "due             Mar 5, 2025 at 9:05 PM\n"
                              "interpretation  AI: …\n"
                              "path            model\n";
    EXPECT_EQ(described(classified(0.97), typed, nullptr, *place), lines);
    const std::string classification = "classification  kind TOMORROW, amount -1, month 2, day 3, hasTime "
                                       "true, hour 21, minute 5, title \"call \"mom\"\"\n";
    EXPECT_EQ(described(classified(std::nullopt), typed, &trace, *place), lines + classification);
    EXPECT_EQ(described(classified(0.97), typed, &trace, *place),
              lines + classification + "score           0.97\n");
}

} // namespace
} // namespace quillo::cli
