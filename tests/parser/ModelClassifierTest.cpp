#include "parser/GeneratedTodoContent.h"
#include "parser/ModelInstructions.h"
#include "parser/Where.h"
#include "support/ScriptedLanguageModel.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo::parser_tests {
namespace {

using support::generatedContent;
using support::generatedContentAt;
using support::ScriptedLanguageModel;

constexpr const char* vague = "Maybe fix the market page";

/// A parser that has a model, and what it made of a text.
struct Asking {
    explicit Asking(const Where& at) : where(at) {}
    Asking() : Asking(tuesday()) {}

    static const Where& tuesday() {
        static const Where where;
        return where;
    }

    void parse(const std::string& text) {
        replies.clear();
        pending = parser.parse(text, where.now, [this](const Parse& parse) { replies.push_back(parse); });
    }

    /// What is understood where the model answers so at once.
    Parse parse(const std::string& text, GeneratedContent answer) {
        model.answersAtOnce = [answer = std::move(answer)](std::string_view) { return answer; };
        parse(text);
        EXPECT_EQ(pending, nullptr);
        EXPECT_EQ(replies.size(), 1U);
        return replies.empty() ? Parse{} : replies.front();
    }

    const Where& where;
    ScriptedLanguageModel model;
    ParserService parser{where.calendar, where.format, &model};
    std::vector<Parse> replies;
    std::unique_ptr<PendingParse> pending;
};

Parse missOf(const std::string& text) {
    return {{text, {}, "regex+ai miss"}, true, ParsePath::Miss};
}

TEST(ModelClassifier, IsNotAskedWhereTheRulesKnow) {
    Asking asking;
    for (const char* text : {"   ", "", "Buy milk", "Call mom tomorrow", "tomorrow"}) {
        asking.parse(text);
        ASSERT_EQ(asking.replies.size(), 1U) << text;
        EXPECT_EQ(asking.replies.front(), asking.parser.parse(text, asking.where.now)) << text;
        EXPECT_EQ(asking.pending, nullptr);
    }
    EXPECT_EQ(asking.model.availabilityQueries, 0);
    EXPECT_TRUE(asking.model.conversations.empty());
}

TEST(ModelClassifier, IsAskedWithTheTrimmedTextAlone) {
    Asking asking;
    asking.parse(" \t tmrw  9p\u00A0\n");
    ASSERT_EQ(asking.model.conversations.size(), 1U);
    const auto& conversation = *asking.model.conversations.front();
    EXPECT_EQ(conversation.prompt, "tmrw  9p");
    EXPECT_EQ(conversation.instructions, modelInstructions(asking.where.now, asking.where.format));
    EXPECT_FALSE(conversation.prewarmed);
    ASSERT_EQ(conversation.schema.size(), 8U);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(conversation.schema[i].description, generatedTodoSchema()[i].description);
}

TEST(ModelClassifier, KnowsTheMomentAndThePlace) {
    const Where autumn({2025, 10, 26}, {1, 59}, "America/New_York", "en_GB");
    Asking asking(autumn);
    asking.parse(vague);
    const ModelReference& reference = asking.model.conversations.front()->reference;
    EXPECT_EQ(reference.now, autumn.now);
    EXPECT_EQ(reference.zone, "America/New_York");
    EXPECT_EQ(reference.locale, "en_GB");
    EXPECT_EQ(reference.year, 2025);
    EXPECT_EQ(reference.month, 10);
    EXPECT_EQ(reference.day, 26);
    EXPECT_EQ(reference.weekday, 1);
    EXPECT_EQ(reference.hour, 1);
    EXPECT_EQ(reference.minute, 59);
}

TEST(ModelClassifier, KnowsTheGregorianDayWhicheverTheCalendarOfTheUser) {
    for (const char* locale : {"th_TH", "fa_IR", "en_US@calendar=hebrew", "ar_SA@calendar=islamic"}) {
        Where where({2025, 3, 1}, {23, 45}, "Asia/Kathmandu", locale);
        where.now = Instant::fromUnixSeconds(1740852899.75); // a second before Saturday's end: 18:14:59 UTC
        Asking asking(where);
        asking.parse(vague);
        const ModelReference& reference = asking.model.conversations.front()->reference;
        EXPECT_EQ(reference.year, 2025) << locale;
        EXPECT_EQ(reference.month, 3) << locale;
        EXPECT_EQ(reference.day, 1) << locale;
        EXPECT_EQ(reference.weekday, where.calendar.civilTime(where.now).weekday) << locale;
        EXPECT_EQ(reference.weekday, 7) << locale;
        EXPECT_EQ(reference.hour, 23) << locale;
        EXPECT_EQ(reference.minute, 59) << locale;
    }
}

TEST(ModelClassifier, DatesWhatTheModelClassified) {
    Asking asking;
    const Parse parse = asking.parse("tmrw 9p call mom", generatedContentAt("TOMORROW", 21, 0, "call mom"));
    EXPECT_EQ(parse.task.title, "call mom");
    EXPECT_EQ(parse.task.dueDate, asking.where.calendar.instant({2025, 3, 5}, {21, 0}));
    EXPECT_EQ(parse.task.interpretation, "AI: TOMORROW amount=0 m=0 d=0 hasTime=true 21:0");
    EXPECT_TRUE(parse.hint);
    EXPECT_EQ(parse.path, ParsePath::Model);
    ASSERT_TRUE(parse.classification);
    EXPECT_EQ(parse.classification->todo,
              (GeneratedTodo{.kind = WhenKind::Tomorrow, .hasTime = true, .hour = 21, .title = "call mom"}));
    EXPECT_EQ(parse.classification->score, std::nullopt);
}

TEST(ModelClassifier, WritesNumbersAsTheyAre) {
    GeneratedContent content = generatedContent("IN_DAYS", "x");
    content.properties[1].second = std::numeric_limits<std::int64_t>::min();
    content.properties[2].second = std::int64_t{-1};
    content.properties[3].second = std::int64_t{31};
    content.properties[5].second = std::int64_t{9};
    content.properties[6].second = std::int64_t{5};
    EXPECT_EQ(Asking().parse(vague, content).task.interpretation,
              "AI: IN_DAYS amount=-9223372036854775808 m=-1 d=31 hasTime=false 9:5");
}

TEST(ModelClassifier, NoDateIsAnAnswerToo) {
    const Parse parse = Asking().parse("Pick up the 15 reports at the market",
                                       generatedContent("NONE", "Pick up the 15 reports at the market"));
    EXPECT_EQ(parse.task, (ParsedTask{"Pick up the 15 reports at the market",
                                      {},
                                      "AI: NONE amount=0 m=0 d=0 hasTime=false 0:0"}));
    EXPECT_EQ(parse.path, ParsePath::Model);
}

TEST(ModelClassifier, ABlankTitleIsTheText) {
    for (const char* title : {"", "  ", "\u00A0\n\t"})
        EXPECT_EQ(Asking().parse("  soon  ", generatedContent("TODAY", title)).task.title, "soon");
}

TEST(ModelClassifier, TitlesAreTakenAsTypedOnes) {
    Asking asking;
    EXPECT_EQ(asking.parse(vague, generatedContent("TODAY", " \u00A0buy  milk\n")).task.title, "buy  milk");
    EXPECT_EQ(asking.parse(vague, generatedContent("TODAY", "a\xFFz")).task.title, "a\uFFFDz");
    EXPECT_EQ(asking.parse(vague, generatedContent("TODAY", "a\x1B[31m\nb")).task.title, "a\x1B[31m\nb");
}

TEST(ModelClassifier, AScoreIsAProbability) {
    GeneratedContent content = generatedContent("TODAY", "x");
    for (const double score : {0.0, 0.25, 1.0}) {
        content.score = score;
        EXPECT_EQ(Asking().parse(vague, content).classification->score, score);
    }
    for (const double score :
         {-0.1, 1.1, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        content.score = score;
        const Parse parse = Asking().parse(vague, content);
        EXPECT_EQ(parse.path, ParsePath::Model);
        EXPECT_EQ(parse.classification->score, std::nullopt);
    }
}

TEST(ModelClassifier, AnUnavailableModelIsToldNothing) {
    Asking asking;
    asking.model.available = false;
    asking.parse(vague);
    EXPECT_EQ(asking.replies, std::vector<Parse>{missOf(vague)});
    EXPECT_EQ(asking.pending, nullptr);
    EXPECT_TRUE(asking.model.conversations.empty());
    EXPECT_EQ(asking.model.availabilityQueries, 1);
}

TEST(ModelClassifier, ALongTextIsKeptFromTheModel) {
    Asking asking;
    std::string text = "soon ";
    while (unicode::characterCount(text) < 500)
        text += "\U0001F438";
    EXPECT_EQ(asking.parse("  " + text + "  ", generatedContent("TODAY", "x")).path, ParsePath::Model);
    asking.parse(text + "!");
    EXPECT_EQ(asking.replies, std::vector<Parse>{missOf(text + "!")});
    EXPECT_EQ(asking.model.conversations.size(), 1U);
}

TEST(ModelClassifier, AFailedRequestIsAMiss) {
    Asking asking;
    asking.model.answersAtOnce = [](std::string_view) { return Error{"out of memory"}; };
    asking.parse(vague);
    EXPECT_EQ(asking.replies, std::vector<Parse>{missOf(vague)});
}

TEST(ModelClassifier, AnAnswerToAnotherQuestionIsAMiss) {
    Asking asking;
    EXPECT_EQ(asking.parse(vague, generatedContent("NEXT_WEEK", "x")), missOf(vague));
    EXPECT_EQ(asking.parse(vague, {}), missOf(vague));
    GeneratedContent content = generatedContent("TODAY", "x");
    content.properties.emplace_back("year", std::int64_t{2026});
    EXPECT_EQ(asking.parse(vague, content), missOf(vague));
    EXPECT_EQ(asking.parse(vague, generatedContent("TODAY", std::string(501, 'x'))), missOf(vague));
}

TEST(ModelClassifier, AnswersLater) {
    Asking asking;
    asking.parse(vague);
    ASSERT_NE(asking.pending, nullptr);
    EXPECT_TRUE(asking.replies.empty());
    EXPECT_TRUE(asking.model.answer(vague, generatedContent("TODAY", "fix the page")));
    ASSERT_EQ(asking.replies.size(), 1U);
    EXPECT_EQ(asking.replies.front().task.title, "fix the page");
    EXPECT_TRUE(asking.model.conversations.front()->dropped) << "one request a session";
}

TEST(ModelClassifier, GivenUpIsAsIfNoModelAnswered) {
    Asking asking;
    asking.parse(vague);
    asking.pending->giveUp();
    EXPECT_EQ(asking.replies, std::vector<Parse>{missOf(vague)});
    EXPECT_TRUE(asking.model.conversations.front()->dropped);
    asking.pending->giveUp();
    EXPECT_EQ(asking.replies.size(), 1U);
}

TEST(ModelClassifier, TheReplyMayDropThePendingParse) {
    Asking asking;
    for (const bool givenUp : {false, true}) {
        std::unique_ptr<PendingParse> pending;
        int replies = 0;
        pending = asking.parser.parse(vague, asking.where.now, [&](const Parse&) {
            ++replies;
            pending.reset();
        });
        ASSERT_NE(pending, nullptr);
        if (givenUp)
            pending->giveUp();
        else
            asking.model.answer(vague, generatedContent("TODAY"));
        EXPECT_EQ(pending, nullptr);
        EXPECT_EQ(replies, 1);
    }
}

TEST(ModelClassifier, NobodyHearsWhatIsAnsweredTooLate) {
    // Even of a model that does not keep to its word.
    Asking asking;
    asking.parse(vague);
    const auto late = asking.model.conversations.front()->reply;
    asking.pending.reset();
    EXPECT_TRUE(asking.model.conversations.front()->dropped);
    late(generatedContent("TODAY"));
    EXPECT_TRUE(asking.replies.empty());

    asking.parse(vague);
    const auto twice = asking.model.conversations.back()->reply;
    twice(generatedContent("TODAY"));
    twice(generatedContent("TODAY"));
    asking.pending->giveUp();
    EXPECT_EQ(asking.replies.size(), 1U);
}

TEST(ModelClassifier, NobodyHearsWhatIsAnsweredOnceTheParserIsGone) {
    ScriptedLanguageModel model;
    auto parser =
        std::make_unique<ParserService>(Asking::tuesday().calendar, Asking::tuesday().format, &model);
    int replies = 0;
    const auto pending = parser->parse(vague, Asking::tuesday().now, [&](const Parse&) { ++replies; });
    parser.reset();
    EXPECT_TRUE(model.answer(vague, generatedContent("TODAY")));
    EXPECT_EQ(replies, 0);
    pending->giveUp();
    EXPECT_EQ(replies, 1) << "but it can still be given up";
}

TEST(ModelClassifier, RequestsAreIndependent) {
    Asking asking;
    std::vector<std::string> titles;
    const auto note = [&](const Parse& parse) { titles.push_back(parse.task.title); };
    const auto one = asking.parser.parse("one soon", asking.where.now, note);
    const auto two = asking.parser.parse("two soon", asking.where.now, note);
    const auto three = asking.parser.parse("three soon", asking.where.now, note);
    EXPECT_EQ(asking.model.waiting(), 3U);
    asking.model.answer("two soon", generatedContent("TODAY", "2"));
    one->giveUp();
    asking.model.answer("three soon", generatedContent("TODAY", "3"));
    EXPECT_EQ(titles, (std::vector<std::string>{"2", "one soon", "3"}));
    EXPECT_EQ(asking.model.conversations.size(), 3U);
}

TEST(ModelClassifier, CountsFromWhenTheTextWasTyped) {
    // However long the model takes: both the instructions and the date go by the time given.
    Asking asking;
    asking.parse(vague);
    GeneratedContent content = generatedContent("IN_MINUTES", "x");
    content.properties[1].second = std::int64_t{10};
    asking.model.answer(vague, content);
    EXPECT_EQ(asking.replies.front().task.dueDate, asking.where.now + 600);
}

TEST(ModelClassifier, TheTraceIsThatOfTheRules) {
    Asking asking;
    Trace trace;
    const auto pending = asking.parser.parse(
        "x tomorrow", asking.where.now, [](const Parse&) {}, &trace);
    EXPECT_EQ(trace.size(), 1U);
}

TEST(ModelClassifier, PrewarmsInASessionOfItsOwn) {
    Asking asking;
    asking.parser.prewarm(asking.where.now);
    ASSERT_EQ(asking.model.conversations.size(), 1U);
    const auto& conversation = *asking.model.conversations.front();
    EXPECT_EQ(conversation.instructions, "warm up");
    EXPECT_TRUE(conversation.prewarmed);
    EXPECT_EQ(conversation.prompt, std::nullopt);
    EXPECT_TRUE(conversation.dropped);
    asking.parse(vague);
    EXPECT_EQ(asking.model.conversations.size(), 2U);
}

TEST(ModelClassifier, AnUnavailableModelIsNotPrewarmed) {
    Asking asking;
    asking.model.available = false;
    asking.parser.prewarm(asking.where.now);
    EXPECT_TRUE(asking.model.conversations.empty());
    asking.where.parser.prewarm(asking.where.now); // There is none at all.
}

/// Any answer: mostly one that looks like the right one, with anything in it.
rc::Gen<GeneratedContent> anyAnswer() {
    using Value = GeneratedContent::Value;
    const auto text = rc::gen::weightedOneOf<std::string>(
        {{5, rc::gen::map(rc::gen::elementOf(rawValues()),
                          [](std::string_view raw) { return std::string(raw); })},
         {1, rc::gen::arbitrary<std::string>()}});
    const auto number = rc::gen::oneOf(
        rc::gen::inRange<std::int64_t>(-2, 70),
        rc::gen::elementOf(std::vector<std::int64_t>{std::numeric_limits<std::int64_t>::min(),
                                                     std::numeric_limits<std::int64_t>::max(), 4'000'001}),
        rc::gen::arbitrary<std::int64_t>());
    const auto value =
        rc::gen::oneOf(rc::gen::map(text, [](std::string t) { return Value(std::move(t)); }),
                       rc::gen::map(number, [](std::int64_t n) { return Value(n); }),
                       rc::gen::map(rc::gen::arbitrary<bool>(), [](bool b) { return Value(b); }));
    return rc::gen::exec([=] {
        GeneratedContent content;
        content.properties = {{"kind", *text},
                              {"amount", *number},
                              {"month", *number},
                              {"day", *number},
                              {"hasTime", *rc::gen::arbitrary<bool>()},
                              {"hour", *number},
                              {"minute", *number},
                              {"title", *rc::gen::arbitrary<std::string>()}};
        for (int changes = *rc::gen::weightedElement<int>({{5, 0}, {2, 1}, {1, 3}}); changes > 0; --changes) {
            const auto at = *rc::gen::inRange<std::size_t>(0, content.properties.size());
            switch (*rc::gen::inRange(0, 4)) {
            case 0:
                content.properties[at].second = *value;
                break;
            case 1:
                content.properties[at].first = *rc::gen::arbitrary<std::string>();
                break;
            case 2:
                content.properties.push_back({content.properties[at].first, *value});
                break;
            default:
                content.properties.erase(content.properties.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
        if (*rc::gen::arbitrary<bool>())
            content.score = *rc::gen::arbitrary<double>();
        return content;
    });
}

RC_GTEST_PROP(ModelClassifier, WhateverIsAnsweredTheTextIsKept, ()) {
    const GeneratedContent content = *anyAnswer();
    Asking asking;
    const Parse parse = asking.parse(vague, content);
    const Result<GeneratedTodo> todo = readGeneratedTodo(content);
    RC_CLASSIFY(todo.ok(), "valid");
    if (!todo) {
        RC_ASSERT(parse == missOf(vague));
        return;
    }
    RC_ASSERT(parse.path == ParsePath::Model);
    RC_ASSERT(!parse.task.title.empty());
    RC_ASSERT(unicode::isWellFormed(parse.task.title));
    RC_ASSERT(parse.classification->todo == *todo);
    RC_ASSERT(!parse.task.dueDate || *parse.task.dueDate < unicode::CivilCalendar::latest + 86400);
}

} // namespace
} // namespace quillo::parser_tests
