#include "parser/GeneratedTodoContent.h"

#include "support/ScriptedLanguageModel.h"
#include "unicode/Text.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace quillo {
namespace {

using support::generatedContent;

const GeneratedTodo dentist{.kind = WhenKind::SpecificDate,
                            .amount = 1,
                            .month = 2,
                            .day = 3,
                            .hasTime = true,
                            .hour = 4,
                            .minute = 5,
                            .title = "dentist"};

TEST(GeneratedTodoContent, AsksForEightPropertiesInOrder) {
    using Type = PropertyGuide::Type;
    const struct {
        const char* name;
        Type type;
        const char* description;
    } expected[] = {
        {"kind", Type::Text, "Pick the SINGLE best-matching enum case. NONE if there's any doubt."},
        {"amount", Type::Integer, "Required for IN_MINUTES/IN_HOURS/IN_DAYS/IN_WEEKS/WEEKS_FROM_TOMORROW."},
        {"month", Type::Integer,
         "Month 1-12 for SPECIFIC_DATE. 0 if no month given or kind is not SPECIFIC_DATE."},
        {"day", Type::Integer, "Day 1-31 for SPECIFIC_DATE. 0 otherwise."},
        {"hasTime", Type::Boolean, "True only when input specifies a TIME OF DAY."},
        {"hour", Type::Integer, "Hour 0-23 (24-hour). 0 if hasTime is false."},
        {"minute", Type::Integer, "Minute 0-59. 0 if hasTime is false."},
        {"title", Type::Text, "Clean task title with all temporal phrases stripped."},
    };
    const AnswerSchema schema = generatedTodoSchema();
    ASSERT_EQ(schema.size(), std::size(expected));
    for (std::size_t i = 0; i < schema.size(); ++i) {
        EXPECT_EQ(schema[i].name, expected[i].name);
        EXPECT_EQ(schema[i].type, expected[i].type) << schema[i].name;
        EXPECT_EQ(schema[i].description, expected[i].description);
        EXPECT_EQ(schema[i].choices.size(), i == 0 ? 26U : 0U) << schema[i].name;
    }
    EXPECT_THAT(schema[0].choices, testing::ElementsAreArray(rawValues()));
}

TEST(GeneratedTodoContent, IsWrittenInTheOrderOfTheForm) {
    const GeneratedContent content = contentOf(dentist);
    const std::vector<std::pair<std::string, GeneratedContent::Value>> expected{
        {"kind", "SPECIFIC_DATE"},   {"amount", std::int64_t{1}}, {"month", std::int64_t{2}},
        {"day", std::int64_t{3}},    {"hasTime", true},           {"hour", std::int64_t{4}},
        {"minute", std::int64_t{5}}, {"title", "dentist"}};
    EXPECT_EQ(content.properties, expected);
    EXPECT_EQ(content.score, std::nullopt);
}

TEST(GeneratedTodoContent, IsReadByName) {
    GeneratedContent content = contentOf(dentist);
    std::reverse(content.properties.begin(), content.properties.end());
    const Result<GeneratedTodo> todo = readGeneratedTodo(content);
    ASSERT_TRUE(todo);
    EXPECT_EQ(*todo, dentist);
}

TEST(GeneratedTodoContent, EveryPropertyIsNeeded) {
    for (std::size_t i = 0; i < contentOf(dentist).properties.size(); ++i) {
        GeneratedContent content = contentOf(dentist);
        content.properties.erase(content.properties.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_FALSE(readGeneratedTodo(content)) << i;
        content.properties.emplace_back("colour", "green");
        EXPECT_FALSE(readGeneratedTodo(content)) << i;
    }
    EXPECT_FALSE(readGeneratedTodo({}));
}

TEST(GeneratedTodoContent, NothingElseMayBeThere) {
    GeneratedContent content = contentOf(dentist);
    content.properties.emplace_back("colour", "green");
    EXPECT_FALSE(readGeneratedTodo(content));
}

TEST(GeneratedTodoContent, NothingMayBeThereTwice) {
    for (std::size_t i = 0; i < contentOf(dentist).properties.size(); ++i) {
        GeneratedContent content = contentOf(dentist);
        content.properties.push_back(content.properties[i]);
        EXPECT_FALSE(readGeneratedTodo(content)) << i;
        content.properties.erase(content.properties.begin() + static_cast<std::ptrdiff_t>((i + 1) % 8));
        EXPECT_FALSE(readGeneratedTodo(content)) << i << ", in the place of another";
    }
}

TEST(GeneratedTodoContent, EveryPropertyIsOfItsType) {
    const GeneratedContent::Value values[] = {"TODAY", std::int64_t{1}, true};
    for (std::size_t i = 0; i < contentOf(dentist).properties.size(); ++i) {
        for (const GeneratedContent::Value& value : values) {
            GeneratedContent content = contentOf(dentist);
            const bool same = content.properties[i].second.index() == value.index();
            content.properties[i].second = value;
            EXPECT_EQ(readGeneratedTodo(content).ok(), same) << content.properties[i].first;
        }
    }
}

TEST(GeneratedTodoContent, NamesAreCaseSensitive) {
    GeneratedContent content = contentOf(dentist);
    content.properties[4].first = "hastime";
    EXPECT_FALSE(readGeneratedTodo(content));
}

TEST(GeneratedTodoContent, AKindThatThereIsNotIsQuoted) {
    for (const std::string kind : {"NEXT_WEEK", "today", ""}) {
        const Result<GeneratedTodo> todo = readGeneratedTodo(generatedContent(kind, "x"));
        ASSERT_FALSE(todo);
        EXPECT_TRUE(todo.error().message.starts_with("Unexpected rawValue \"" + kind + "\""));
    }
}

TEST(GeneratedTodoContent, NumbersMayBeAny) {
    GeneratedTodo todo = dentist;
    todo.amount = std::numeric_limits<std::int64_t>::min();
    todo.hour = std::numeric_limits<std::int64_t>::max();
    const Result<GeneratedTodo> read = readGeneratedTodo(contentOf(todo));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, todo);
}

TEST(GeneratedTodoContent, ATitleIsMadeWellFormed) {
    EXPECT_EQ(readGeneratedTodo(generatedContent("TODAY", "a\xFFz"))->title, "a\uFFFDz");
}

TEST(GeneratedTodoContent, ATitleIsBounded) {
    std::string title;
    for (int i = 0; i < 500; ++i)
        title += "\U0001F438";
    EXPECT_EQ(readGeneratedTodo(generatedContent("TODAY", title))->title, title);
    EXPECT_FALSE(readGeneratedTodo(generatedContent("TODAY", title + "!")));
    EXPECT_FALSE(readGeneratedTodo(generatedContent("TODAY", std::string(1 << 20, 'x'))));
}

RC_GTEST_PROP(GeneratedTodoContent, WhatIsWrittenIsRead,
              (std::int64_t amount, std::int64_t month, std::int64_t day, bool hasTime, std::int64_t hour,
               std::int64_t minute)) {
    const GeneratedTodo todo{.kind = *whenKindOf(*rc::gen::elementOf(rawValues())),
                             .amount = amount,
                             .month = month,
                             .day = day,
                             .hasTime = hasTime,
                             .hour = hour,
                             .minute = minute,
                             .title = unicode::toUtf8(unicode::toUtf16(*rc::gen::arbitrary<std::string>()))};
    const Result<GeneratedTodo> read = readGeneratedTodo(contentOf(todo));
    RC_ASSERT(read.ok());
    RC_ASSERT(*read == todo);
}

} // namespace
} // namespace quillo
