#include "classifier/EmbeddedClassifier.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <variant>

namespace quillo {
namespace {

constexpr std::string_view names[] = {"kind", "amount", "month", "day", "hasTime", "hour", "minute", "title"};

std::vector<PropertyGuide> schema() {
    std::vector<PropertyGuide> guides;
    for (const std::string_view name : names)
        guides.push_back({.name = name, .type = PropertyGuide::Type::Text, .description = {}});
    return guides;
}

/// Tuesday, 4 March 2025, 9:41.
ModelReference tuesday() {
    ModelReference reference;
    reference.zone = "America/New_York";
    reference.locale = "en_US";
    reference.year = 2025;
    reference.month = 3;
    reference.day = 4;
    reference.weekday = 3;
    reference.hour = 9;
    reference.minute = 41;
    return reference;
}

GeneratedContent ask(EmbeddedClassifier& model, const std::string& text) {
    const std::vector<PropertyGuide> guides = schema();
    GeneratedContent content;
    const auto session = model.startSession("", tuesday());
    session->respond(text, guides, [&](const Result<GeneratedContent>& answer) {
        ASSERT_TRUE(answer) << answer.error().message;
        content = *answer;
    });
    return content;
}

/// What was answered in one line: kind, amount, month, day, time, title.
std::string answerTo(const std::string& text) {
    static EmbeddedClassifier model;
    const GeneratedContent content = ask(model, text);
    std::string line;
    for (const auto& [name, value] : content.properties) {
        if (const auto* string = std::get_if<std::string>(&value))
            line += *string;
        else if (const auto* flag = std::get_if<bool>(&value))
            line += *flag ? "time" : "day";
        else
            line += std::to_string(std::get<std::int64_t>(value));
        line += name == "title" ? "" : " ";
    }
    return line;
}

TEST(EmbeddedClassifier, IsAvailable) {
    EXPECT_TRUE(EmbeddedClassifier().isAvailable());
}

// The examples that every model is given in its instructions.

TEST(EmbeddedClassifier, ClassifiesTheExamplesOfTheInstructions) {
    EXPECT_EQ(answerTo("in a couple hours"), "IN_HOURS 2 0 0 day 0 0 ");
    EXPECT_EQ(answerTo("in a few minutes"), "IN_MINUTES 10 0 0 day 0 0 ");
    EXPECT_EQ(answerTo("later today"), "TODAY 0 0 0 day 0 0 ");
    EXPECT_EQ(answerTo("first thing tomorrow"), "TOMORROW 0 0 0 time 8 0 ");
    EXPECT_EQ(answerTo("by 5pm"), "TODAY 0 0 0 time 17 0 ");
    EXPECT_EQ(answerTo("around 3"), "TODAY 0 0 0 time 15 0 ");
    EXPECT_EQ(answerTo("tmrw at 9p"), "TOMORROW 0 0 0 time 21 0 ");
    EXPECT_EQ(answerTo("early next week"), "NEXT_MONDAY 0 0 0 day 0 0 ");
    EXPECT_EQ(answerTo("wednesday afternoon"), "THIS_WEDNESDAY 0 0 0 time 14 0 ");
}

TEST(EmbeddedClassifier, RejectsWhatTheInstructionsReject) {
    for (const std::string text : {"Buy 3 apples", "Email Sam back", "Pick up the 15 reports",
                                   "Schedule a 1:1 meeting", "Review issue #42"})
        EXPECT_EQ(answerTo(text), "NONE 0 0 0 day 0 0 " + text);
}

TEST(EmbeddedClassifier, KeepsTheTitle) {
    EXPECT_EQ(answerTo("call mom tmrw 9p"), "TOMORROW 0 0 0 time 21 0 call mom");
    EXPECT_EQ(answerTo("Pay rent 3rd of april"), "SPECIFIC_DATE 0 4 3 day 0 0 Pay rent");
    EXPECT_EQ(answerTo("market research"), "NONE 0 0 0 day 0 0 market research");
}

TEST(EmbeddedClassifier, AnswersNothingButWhatItKnows) {
    EmbeddedClassifier model;
    const PropertyGuide colour{.name = "colour", .description = {}};
    bool failed = false;
    model.startSession("", tuesday())
        ->respond("tmrw", {&colour, 1}, [&](const Result<GeneratedContent>& answer) { failed = !answer; });
    EXPECT_TRUE(failed);
}

TEST(EmbeddedClassifier, SaysHowSureItIs) {
    EmbeddedClassifier model;
    EXPECT_GT(ask(model, "call mom tmrw 9p").score, 0.9);
}

TEST(EmbeddedClassifier, TextsWithoutAWordAreNone) {
    EXPECT_EQ(answerTo(""), "NONE 0 0 0 day 0 0 ");
    EXPECT_EQ(answerTo(" \t"), "NONE 0 0 0 day 0 0  \t");
}

TEST(EmbeddedClassifier, TheReplyMayDropTheSession) {
    EmbeddedClassifier model;
    const std::vector<PropertyGuide> guides = schema();
    auto session = model.startSession("", tuesday());
    bool answered = false;
    session->respond("tmrw", guides, [&](const Result<GeneratedContent>& answer) {
        session.reset();
        answered = answer.ok();
    });
    EXPECT_TRUE(answered);
}

RC_GTEST_PROP(EmbeddedClassifierProperty, AnswersAnyBytesWithinItsRanges, ()) {
    static EmbeddedClassifier model;
    const auto pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::oneOf(
        rc::gen::element<std::string>("tmrw ", "9p ", "5/12 ", "in ", "3 ", "weeks ", "the ", "31st ", "feb ",
                                      "2026 ", "\xF0\x9F\x8E\x82 ", "\x80", " at ", "noon "),
        rc::gen::string<std::string>()));
    std::string text;
    for (const std::string& piece : pieces)
        text += piece;
    if (text.size() > 500)
        return;
    const GeneratedContent content = ask(model, text);
    RC_ASSERT(content.properties.size() == std::size(names));
    const auto number = [&](std::size_t i) { return std::get<std::int64_t>(content.properties[i].second); };
    RC_ASSERT(number(1) >= 0 && number(1) < 100'000);
    RC_ASSERT(number(2) >= 0 && number(2) <= 12);
    RC_ASSERT(number(3) >= 0 && number(3) <= 31);
    RC_ASSERT(number(5) >= 0 && number(5) <= 23);
    RC_ASSERT(number(6) >= 0 && number(6) <= 59);
    RC_ASSERT(std::get<std::string>(content.properties[7].second).size() <= text.size());
    RC_ASSERT(*content.score >= 0 && *content.score <= 1);
}

} // namespace
} // namespace quillo
